// SPDX-License-Identifier: MIT
#include "headless/documents/document_writing.h"
#include "headless/model/handles.h"
#include "host/inexclude.h"

#include <algorithm>
#include <filesystem>

namespace headless {

namespace {

InExcludeData* listOf(const GeData& value) {
    return static_cast<InExcludeData*>(value.GetCustomDataType(CUSTOMDATATYPE_INEXCLUDE_LIST));
}

void writeLink(const Node* target, DocumentWriting& writing) {
    if (const std::string* const id = writing.ids.idOf(target)) {
        writing.json.text(*id);
    } else {
        writing.json.null();
    }
}

void writeList(InExcludeData& list, DocumentWriting& writing) {
    JsonWriter& json = writing.json;
    json.beginArray(true);
    for (int32_t i = 0; i < list.GetObjectCount(); ++i) {
        const std::string* const id = writing.ids.idOf(fromHost(list.LinkFromIndex(i).GetLink()));
        if (!id) {
            continue;
        }
        const int32_t flags = list.GetFlags(i);
        if (flags == 0) {
            json.text(*id);
            continue;
        }
        json.beginArray();
        json.text(*id);
        json.integer(flags);
        json.endArray();
    }
    json.endArray();
}

/// Paths below the document's folder are written from there, with slashes, so that both can move together, to
/// another system as well.
std::string pathFor(const Filename& path, const std::string& file) {
    const std::filesystem::path document =
        std::filesystem::absolute(std::filesystem::path(reinterpret_cast<const char8_t*>(file.c_str())));
    const std::u8string parent = document.lexically_normal().parent_path().u8string();
    const std::string folder(parent.begin(), parent.end());
    const std::string& full = path.GetUtf8();
    const bool isBelow = !folder.empty() && full.size() > folder.size() + 1 && full.starts_with(folder) &&
                         (full[folder.size()] == '/' || full[folder.size()] == Filename::separator);
    if (!isBelow) {
        return full;
    }
    std::string relative = full.substr(folder.size() + 1);
    std::ranges::replace(relative, Filename::separator, '/');
    return relative;
}

void writeTime(const BaseTime& time, JsonWriter& json) {
    json.beginArray(true);
    json.number(time.GetNumerator());
    json.number(time.GetDenominator());
    json.endArray();
}

/// How a document writes a value: the name of its type, and the kind of parameter for which the value alone
/// says it.
struct Form {
    const char* type;
    ParameterKind kind;
    /// True when the value alone says it for a parameter that nobody declared, too.
    bool plainIfUndeclared;
};

/// Without a type when there is none.
Form formOf(const GeData& value) {
    switch (value.GetType()) {
    case DA_LONG:
        return {"long", ParameterKind::integer, true};
    case DA_REAL:
        return {"real", ParameterKind::real, true};
    case DA_VECTOR:
        return {"vector", ParameterKind::vector, true};
    case DA_STRING:
        return {"text", ParameterKind::string, true};
    case DA_FILENAME:
        return {"file", ParameterKind::filename, false};
    case DA_TIME:
        return {"time", ParameterKind::time, false};
    case DA_MATRIX:
        return {"matrix", ParameterKind::other, false};
    case DA_LINK:
        return {"link", ParameterKind::link, false};
    case DA_CUSTOM:
        return {listOf(value) ? "inExclude" : nullptr, ParameterKind::inExclude, false};
    default:
        return {nullptr, ParameterKind::other, false};
    }
}

void writeBare(const GeData& value, bool undeclared, DocumentWriting& writing) {
    JsonWriter& json = writing.json;
    switch (value.GetType()) {
    case DA_LONG:
        return json.integer(value.GetLong());
    case DA_REAL:
        return json.real(value.GetReal(), undeclared);
    case DA_VECTOR:
        return json.vector(value.GetVector());
    case DA_STRING:
        return json.text(value.GetString().GetUtf8());
    case DA_FILENAME:
        return json.text(pathFor(value.GetFilename(), writing.file));
    case DA_TIME:
        return writeTime(value.GetTime(), json);
    case DA_MATRIX:
        return json.matrix(value.GetMatrix());
    case DA_LINK:
        return writeLink(fromHost(value.GetLink()), writing);
    default:
        return writeList(*listOf(value), writing);
    }
}

} // namespace

std::string parameterKey(const Node& node, int32_t id) {
    if (const std::optional<Parameter> parameter = findParameter(node.type(), id)) {
        const std::optional<Parameter> named = findParameter(node.type(), parameter->name);
        if (named && named->id == id) {
            return std::string(parameter->name);
        }
    }
    return std::to_string(id);
}

bool hasForm(const GeData& value) {
    return formOf(value).type != nullptr;
}

void writeValue(const Node& node, int32_t id, const GeData& value, DocumentWriting& writing) {
    JsonWriter& json = writing.json;
    const std::optional<Parameter> parameter = findParameter(node.type(), id);
    const ParameterKind kind = parameter ? parameter->kind : ParameterKind::other;
    const bool isFlag = value.GetType() == DA_LONG && (value.GetLong() == 0 || value.GetLong() == 1);
    if (kind == ParameterKind::boolean && isFlag) {
        json.boolean(value.GetLong() == 1);
        return;
    }
    const Form form = formOf(value);
    const bool undeclared = kind == ParameterKind::other;
    if (undeclared ? form.plainIfUndeclared : form.kind == kind) {
        writeBare(value, undeclared, writing);
        return;
    }
    json.beginObject(true);
    json.key(form.type);
    writeBare(value, false, writing);
    json.endObject();
}

} // namespace headless
