// SPDX-License-Identifier: MIT
#include "headless/documents/document_writing.h"
#include "headless/model/handles.h"
#include "host/inexclude.h"

#include "foundation/file_utils.h"

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

/// Paths below the document's folder are written from there, so that both can move together.
std::string pathFor(const Filename& path, const std::string& file) {
    const std::string folder(Quenza::FileUtils::getDirectory(file).view());
    const std::string& full = path.GetUtf8();
    const bool isBelow = !folder.empty() && full.size() > folder.size() + 1 && full.starts_with(folder) &&
                         (full[folder.size()] == '/' || full[folder.size()] == Filename::separator);
    return isBelow ? full.substr(folder.size() + 1) : full;
}

void writeTime(const BaseTime& time, JsonWriter& json) {
    json.beginArray(true);
    json.number(time.GetNumerator());
    json.number(time.GetDenominator());
    json.endArray();
}

/// How a document writes a value of a type: the name of the type, and the kinds of parameters for which the
/// value alone says it. `other` stands for a parameter that nobody declared.
struct Form {
    const char* type;
    std::initializer_list<ParameterKind> plainFor;
};

Form formOf(const GeData& value) {
    using enum ParameterKind;
    switch (value.GetType()) {
    case DA_LONG:
        return {"long", {integer, other}};
    case DA_REAL:
        return {"real", {real, other}};
    case DA_VECTOR:
        return {"vector", {vector, other}};
    case DA_STRING:
        return {"text", {string, other}};
    case DA_FILENAME:
        return {"file", {filename}};
    case DA_TIME:
        return {"time", {time}};
    case DA_MATRIX:
        return {"matrix", {}};
    case DA_LINK:
        return {"link", {link}};
    default:
        return {listOf(value) ? "inExclude" : nullptr, {inExclude}};
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
    return value.GetType() != DA_NIL && formOf(value).type != nullptr;
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
    for (const ParameterKind plain : form.plainFor) {
        if (plain == kind) {
            writeBare(value, kind == ParameterKind::other, writing);
            return;
        }
    }
    json.beginObject(true);
    json.key(form.type);
    writeBare(value, false, writing);
    json.endObject();
}

} // namespace headless
