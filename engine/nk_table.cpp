// SPDX-License-Identifier: MIT
#include "engine/nk_table.h"

#include "engine/cie1931.h"
#include "foundation/exceptions.h"
#include "foundation/file_utils.h"
#include "foundation/text_cursor.h"

#include <algorithm>

namespace engine {

namespace {

using Quenza::TextCursor;

constexpr Quenza::u64 MAX_TABLE_BYTES = 4u << 20;
/// Nanometres in a micrometre, a nanometre and an Angstrom.
constexpr double UNITS[] = {1000.0, 1.0, 0.1};

/// A number of the line that the cursor is in, behind blanks and one comma.
double nextOf(TextCursor& cursor, int line) {
    cursor.skipBlanks();
    if (!cursor.atEnd() && cursor.peek() == ',') {
        cursor.advance();
        cursor.skipBlanks();
    }
    double value = 0;
    if (!cursor.parseDouble(value)) {
        throw Quenza::QuenzaException("line " + std::to_string(line) + " lacks a number");
    }
    if (!(value >= 0 && value < 1e6)) {
        throw Quenza::QuenzaException("line " + std::to_string(line) + " has a number out of range");
    }
    return value;
}

void skipLine(TextCursor& cursor) {
    while (!cursor.atEnd() && cursor.peek() != '\n') {
        cursor.advance();
    }
    if (!cursor.atEnd()) {
        cursor.advance();
    }
}

/// Share of visible light from `first` to `last`.
double coverage(double first, double last) {
    const double low = std::max(first, double(CIE_START));
    const double high = std::min(last, double(CIE_END));
    return std::max(0.0, high - low) / double(CIE_END - CIE_START);
}

} // namespace

std::shared_ptr<const NKTable> NKTable::parse(std::string_view text, std::string& fault) {
    auto table = std::make_shared<NKTable>();
    std::vector<Entry>& entries = table->entries_;
    TextCursor cursor(text);
    try {
        for (int line = 1; !cursor.atEnd(); ++line) {
            cursor.skipBlanks();
            const char first = cursor.atEnd() ? '\n' : cursor.peek();
            if (first != ';' && first != '#' && first != '\n' && first != '\r') {
                const double wavelength = nextOf(cursor, line);
                const double n = nextOf(cursor, line);
                entries.push_back({wavelength, n, nextOf(cursor, line)});
            }
            skipLine(cursor);
        }
        if (entries.size() < 2) {
            throw Quenza::QuenzaException("it has less than two lines of numbers");
        }
        if (entries.front().nanometres > entries.back().nanometres) {
            std::reverse(entries.begin(), entries.end());
        }
        const auto falls = [](const Entry& a, const Entry& b) { return !(a.nanometres < b.nanometres); };
        if (std::adjacent_find(entries.begin(), entries.end(), falls) != entries.end()) {
            throw Quenza::QuenzaException("its wavelengths neither rise nor fall");
        }
        double unit = 0;
        double most = 0;
        for (const double candidate : UNITS) {
            const double covered =
                coverage(entries.front().nanometres * candidate, entries.back().nanometres * candidate);
            if (covered > most) {
                most = covered;
                unit = candidate;
            }
        }
        if (!(most > 0.5)) {
            throw Quenza::QuenzaException("it leaves out most of visible light");
        }
        for (Entry& entry : entries) {
            entry.nanometres *= unit;
        }
        return table;
    } catch (const Quenza::QuenzaException& exception) {
        fault = exception.what();
        return nullptr;
    }
}

std::shared_ptr<const NKTable> NKTable::load(const std::string& path, std::string& fault) {
    try {
        if (Quenza::FileUtils::getFileSize(path) > MAX_TABLE_BYTES) {
            fault = "it is too large";
            return nullptr;
        }
        return parse(Quenza::FileUtils::readEntireFile(path), fault);
    } catch (const Quenza::MessageExcep& exception) {
        fault = exception.what();
        return nullptr;
    }
}

NKTable::Index NKTable::at(double nanometres) const {
    const auto above =
        std::lower_bound(entries_.begin(), entries_.end(), nanometres,
                         [](const Entry& entry, double wanted) { return entry.nanometres < wanted; });
    if (above == entries_.begin()) {
        return {above->n, above->k};
    }
    const Entry& low = *(above - 1);
    if (above == entries_.end()) {
        return {low.n, low.k};
    }
    const double t = (nanometres - low.nanometres) / (above->nanometres - low.nanometres);
    return {low.n + t * (above->n - low.n), low.k + t * (above->k - low.k)};
}

} // namespace engine
