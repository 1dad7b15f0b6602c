// SPDX-License-Identifier: MIT
#include "end_to_end/programs.h"

#include <map>
#include <tinyxml.h>

#include "support/run_program.h"

namespace fs = std::filesystem;

namespace {

/// Names of nodes by their UIDs, which references are then told by.
using NodeNames = std::map<std::string, std::string>;

/// Without the white space around it, and with the line breaks and tabs in it told.
std::string escaped(const std::string& text) {
    const size_t start = text.find_first_not_of(" \t\r\n");
    if (start == std::string::npos) {
        return "";
    }
    const std::string trimmed = text.substr(start, text.find_last_not_of(" \t\r\n") - start + 1);
    return replaceAll(replaceAll(trimmed, "\n", "\\n"), "\t", "\\t");
}

std::string onOneLine(const TiXmlElement& element, const NodeNames& names) {
    std::string text = "<" + element.ValueStr() + ">";
    for (const TiXmlNode* child = element.FirstChild(); child; child = child->NextSibling()) {
        if (const TiXmlElement* const inner = child->ToElement()) {
            text += onOneLine(*inner, names);
        } else if (child->ToText()) {
            const auto name = names.find(child->ValueStr());
            const bool isReference = element.ValueStr().ends_with("_uid");
            if (isReference && name != names.end()) {
                text += name->second;
            } else {
                const bool isPath = element.ValueStr() == "path";
                text += escaped(isPath ? replaceAll(child->ValueStr(), "\\", "/") : child->ValueStr());
            }
        }
    }
    return text + "</" + element.ValueStr() + ">";
}

std::string childText(const TiXmlElement& element, const char* name) {
    const TiXmlElement* const child = element.FirstChildElement(name);
    return child && child->GetText() ? child->GetText() : "";
}

/// Baked files have the clock's number between their material and their channel: "_123_albedo.jpg".
std::string withoutBakeNumbers(std::string text) {
    for (size_t end = text.find(".jpg"); end != std::string::npos; end = text.find(".jpg", end + 1)) {
        const size_t behindNumber = text.find_last_not_of("abcdefghijklmnopqrstuvwxyz_", end - 1);
        if (behindNumber == std::string::npos || text[behindNumber + 1] != '_') {
            continue;
        }
        const size_t before = text.find_last_not_of("0123456789", behindNumber);
        if (before != std::string::npos && before < behindNumber && text[before] == '_') {
            text.replace(before + 1, behindNumber - before, "N");
            end = text.find(".jpg", before);
        }
    }
    return text;
}

/// The words of a command, of which those with blanks stand in single quotes.
std::vector<std::string> wordsOf(const std::string& command) {
    std::vector<std::string> words;
    bool isInside = false;
    bool isQuoted = false;
    for (const char character : command) {
        if (character == '\'') {
            isQuoted = !isQuoted;
        } else if (character == ' ' && !isQuoted) {
            isInside = false;
            continue;
        }
        if (!isInside) {
            words.emplace_back();
        }
        isInside = true;
        if (character != '\'') {
            words.back() += character;
        }
    }
    return words;
}

} // namespace

int Programs::run(const std::string& command) {
    std::vector<std::string> words = wordsOf(command);
    const std::string program = (fs::path(QUENZA_BIN_DIR) / words.front()).string();
    words.erase(words.begin());
    const Quenza::Outcome outcome = Quenza::runProgram(program, words, folder());
    out = outcome.out;
    errors = outcome.errors;
    return outcome.status;
}

int Programs::headless(const std::string& words) {
    return run("quenza-headless --fixed-clock '2026-11-24 09:05:07' " + words);
}

int Programs::sceneTool(const std::string& words) {
    return run("quenza-scene " + words);
}

fs::path Programs::exportDocument(const std::string& document) {
    const fs::path scene = folder() / ("export-" + fs::path(document).stem().string()) / "scene.qzs";
    return headless("render '" + document + "' --to '" + scene.string() + "'") == 0 ? scene : fs::path();
}

void Programs::writeDocument(const std::string& name, const std::string& materials,
                             const std::string& objects) const {
    writeFile(folder() / name,
              "{\"format\": \"quenza-headless-document\", \"version\": 1,\n\"materials\": [" + materials +
                  "],\n\"objects\": [" + objects + "]}\n");
}

std::string materialOutline(const fs::path& scene, const fs::path& folder) {
    TiXmlBase::SetCondenseWhiteSpace(false);
    TiXmlDocument document;
    EXPECT_TRUE(document.LoadFile(scene.string())) << scene;
    const TiXmlElement* const root = document.RootElement();
    NodeNames names;
    for (const TiXmlElement* node = root->FirstChildElement(); node; node = node->NextSiblingElement()) {
        names[childText(*node, "uid")] = childText(*node, "name");
    }
    std::string text;
    for (const TiXmlElement* node = root->FirstChildElement(); node; node = node->NextSiblingElement()) {
        if (node->ValueStr() != "material" && node->ValueStr() != "medium") {
            continue;
        }
        text += node->ValueStr() + " " + childText(*node, "name") + "\n";
        for (const TiXmlElement* body = node->FirstChildElement("name")->NextSiblingElement(); body;
             body = body->NextSiblingElement()) {
            text += "  " + body->ValueStr() +
                    (body->FirstChildElement() ? "\n" : " " + onOneLine(*body, names) + "\n");
            for (const TiXmlElement* part = body->FirstChildElement(); part;
                 part = part->NextSiblingElement()) {
                text += "    " + onOneLine(*part, names) + "\n";
            }
        }
    }
    return replaceAll(withoutBakeNumbers(text), folder.generic_string(), "FOLDER");
}
