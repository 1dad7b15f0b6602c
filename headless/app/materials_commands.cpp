// SPDX-License-Identifier: MIT
#include "headless/app/commands.h"

#include "headless/app/document_nodes.h"
#include "headless/app/plugin_numbers.h"
#include "headless/documents/save_document.h"

#include <cstdio>

namespace headless {

namespace {

size_t countPluginMaterials(const Document& document) {
    const std::vector<Material*> materials = materialsOf(document);
    return static_cast<size_t>(std::ranges::count(materials, QUENZA_MATERIAL, &Material::type));
}

std::string counted(size_t count, const std::string& thing) {
    return std::to_string(count) + " " + thing + (count == 1 ? "" : "s");
}

/// The plug-in tells why it stopped on its console.
std::string lastLine(Host& host, size_t linesBefore) {
    const std::vector<std::string> lines = host.console().lines();
    return lines.size() > linesBefore ? ": " + lines.back() : "";
}

} // namespace

ExitStatus convertMaterialsCommand(Host& host, const Arguments& arguments) {
    const std::string target = saveTarget(arguments);
    const std::optional<int32_t> unit = openDocumentFile(host, arguments.operands.front(), folderOf(target));
    Document& document = *host.document();
    for (const std::string& name : arguments.values("--material")) {
        for (Material* const material : nodesNamed(name, materialsOf(document), "material")) {
            if (material->type() == QUENZA_MATERIAL) {
                throw UsageError("The material \"" + name + "\" is one of the plug-in's already");
            }
            material->info |= BIT_ACTIVE;
        }
    }
    if (arguments.has("--material")) {
        // To "Convert only selected materials?".
        host.user().addAnswer(true);
    }
    if (host.wasInterrupted()) {
        return ExitStatus::interrupted;
    }
    const size_t before = countPluginMaterials(document);
    if (!host.executeCommand(CONVERT_MATERIALS)) {
        throw HostError("Not all materials could be converted");
    }
    saveDocument(document, target, unit);
    std::puts((counted(countPluginMaterials(document) - before, "material") + " converted").c_str());
    return ExitStatus::done;
}

ExitStatus importMaterialsCommand(Host& host, const Arguments& arguments) {
    const std::string target = saveTarget(arguments);
    std::optional<int32_t> unit;
    if (const std::optional<std::string> into = arguments.value("--into")) {
        unit = openDocumentFile(host, *into, folderOf(target));
    } else {
        host.open(std::make_unique<Document>());
    }
    const std::filesystem::path file = platform::pathFromUtf8(arguments.operands.front());
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error)) {
        throw HostError(arguments.operands.front() + ": there is no such file");
    }
    host.user().addFileAnswer(platform::utf8FromPath(std::filesystem::absolute(file).lexically_normal()));
    if (host.wasInterrupted()) {
        return ExitStatus::interrupted;
    }
    Document& document = *host.document();
    const size_t before = countPluginMaterials(document);
    const size_t linesBefore = host.console().lines().size();
    if (!host.executeCommand(IMPORT_MATERIALS)) {
        throw HostError(arguments.operands.front() + ": the materials can't be read" +
                        lastLine(host, linesBefore));
    }
    saveDocument(document, target, unit);
    std::puts((counted(countPluginMaterials(document) - before, "material") + " imported").c_str());
    return ExitStatus::done;
}

} // namespace headless
