// SPDX-License-Identifier: MIT
#include "host/filename.h"

#include "host/tables.h"

#include <string_view>

namespace {

bool isSeparator(char c) {
    return c == '/' || c == Filename::separator;
}

/// "/", and on Windows "C:\": without its separator it would be the drive's current folder.
bool isRoot(std::string_view path) {
    const bool isDrive = Filename::separator == '\\' && path.size() == 3 && path[1] == ':';
    return path.size() == 1 || isDrive;
}

} // namespace

size_t Filename::FileStart() const {
    size_t at = path_.size();
    while (at > 0 && !isSeparator(path_[at - 1])) {
        --at;
    }
    return at;
}

size_t Filename::SuffixDot() const {
    const size_t dot = path_.rfind('.');
    return dot == std::string::npos || dot < FileStart() ? std::string::npos : dot;
}

Filename Filename::GetDirectory() const {
    const size_t start = FileStart();
    if (start == 0) {
        return Filename();
    }
    const bool keepsSeparator = isRoot(std::string_view(path_).substr(0, start));
    return Filename(String(path_.substr(0, keepsSeparator ? start : start - 1)));
}

Filename Filename::GetFile() const {
    return Filename(String(path_.substr(FileStart())));
}

String Filename::GetSuffix() const {
    const size_t dot = SuffixDot();
    return dot == std::string::npos ? String() : String(path_.substr(dot + 1));
}

void Filename::SetDirectory(const Filename& directory) {
    *this = directory + GetFile();
}

void Filename::SetFile(const Filename& file) {
    path_ = path_.substr(0, FileStart()) + file.path_;
}

void Filename::SetSuffix(const String& suffix) {
    ClearSuffix();
    path_ += '.';
    path_ += suffix.GetUtf8();
}

void Filename::ClearSuffix() {
    const size_t dot = SuffixDot();
    if (dot != std::string::npos) {
        path_.erase(dot);
    }
}

bool Filename::CheckSuffix(const String& suffix) const {
    return GetSuffix().ToLower() == suffix.ToLower();
}

Filename operator+(const Filename& directory, const Filename& path) {
    if (directory.path_.empty()) {
        return path;
    }
    Filename joined = directory;
    if (!isSeparator(joined.path_.back())) {
        joined.path_ += Filename::separator;
    }
    joined.path_ += path.path_;
    return joined;
}

bool Filename::FileSelect(int32_t mode, const String& title) {
    return HostTables()->general->FileSelect(*this, mode, title);
}
