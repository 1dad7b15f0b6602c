// SPDX-License-Identifier: MIT
#include "headless/app/commands.h"

#include "foundation/native_path.h"
#include "headless/app/document_nodes.h"
#include "headless/app/image_output.h"
#include "headless/app/output_folder.h"
#include "headless/app/plugin_numbers.h"
#include "headless/preview/material_preview.h"
#include "host/videopost.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <set>

namespace headless {

namespace {

constexpr int32_t QUALITY_PARAMETER = 6032;

struct QualityName {
    const char* name;
    int32_t value;
};
constexpr QualityName QUALITIES[] = {
    {"low", 6033}, {"medium", 6034}, {"high", 6035}, {"very-high", 6332}, {"none", 6331}};

constexpr int32_t LARGEST_SIZE = 4096;

std::filesystem::path targetImage(const Arguments& arguments) {
    const std::filesystem::path path = Quenza::nativePath(arguments.value("--image").value_or(""));
    if (path.extension() != ".png") {
        throw UsageError("materials preview needs --image FILE.png");
    }
    return std::filesystem::absolute(path).lexically_normal();
}

PreviewSize previewSize(const Arguments& arguments) {
    PreviewSize size;
    const std::optional<std::string> text = arguments.value("--size");
    if (!text) {
        return size;
    }
    const char* const end = text->data() + text->size();
    const auto [stop, error] = std::from_chars(text->data(), end, size.width);
    if (error != std::errc() || stop != end || size.width < 1 || size.width > LARGEST_SIZE) {
        throw UsageError("--size takes a whole number from 1 to " + std::to_string(LARGEST_SIZE) +
                         ", not \"" + *text + "\"");
    }
    size.height = size.width;
    return size;
}

std::optional<int32_t> quality(const Arguments& arguments) {
    const std::optional<std::string> name = arguments.value("--quality");
    if (!name) {
        return std::nullopt;
    }
    std::vector<std::string> known;
    for (const QualityName& entry : QUALITIES) {
        if (*name == entry.name) {
            return entry.value;
        }
        known.emplace_back(entry.name);
    }
    throw UsageError("There is no quality \"" + *name + "\"" + suggestion(*name, known));
}

/// What --material names, each once; "*" stands for all of the plug-in.
std::vector<Material*> wantedMaterials(const Document& document, const Arguments& arguments) {
    std::vector<Material*> wanted;
    const auto want = [&wanted](Material* material) {
        if (std::ranges::find(wanted, material) == wanted.end()) {
            wanted.push_back(material);
        }
    };
    for (const std::string& name : arguments.values("--material")) {
        if (name == "*") {
            std::ranges::for_each(materialsOf(document), [&](Material* material) {
                if (material->type() == QUENZA_MATERIAL) {
                    want(material);
                }
            });
            continue;
        }
        for (Material* const material : nodesNamed(name, materialsOf(document), "material")) {
            if (material->type() != QUENZA_MATERIAL) {
                throw UsageError(
                    "The material \"" + name +
                    "\" is one of the host's: \"materials convert\" makes it one with a preview");
            }
            want(material);
        }
    }
    if (wanted.empty()) {
        throw UsageError(arguments.has("--material") ? "The document has no material of the plug-in"
                                                     : "materials preview needs --material NAME");
    }
    return wanted;
}

/// The part of a file's name that tells the material: what file systems don't take becomes "_".
std::string fileNamePart(const std::string& name) {
    std::string part = name.empty() ? "_" : name;
    std::ranges::replace_if(
        part,
        [](char c) {
            constexpr std::string_view REFUSED = "<>:\"/\\|?*";
            constexpr unsigned char FIRST_PRINTABLE = 0x20;
            return static_cast<unsigned char>(c) < FIRST_PRINTABLE ||
                   REFUSED.find(c) != std::string_view::npos;
        },
        '_');
    return part;
}

/// One material's image is the file itself; those of several are called after it and the materials.
std::vector<std::filesystem::path> imageFiles(const std::vector<Material*>& materials,
                                              const std::filesystem::path& file) {
    if (materials.size() == 1) {
        return {file};
    }
    std::vector<std::filesystem::path> files;
    std::set<std::string> taken;
    const std::string start = Quenza::utf8Path(file.parent_path() / file.stem()) + "_";
    for (const Material* const material : materials) {
        const std::string part = fileNamePart(material->name);
        std::string name = part;
        for (int number = 2; !taken.insert(name).second; ++number) {
            name = part + "_" + std::to_string(number);
        }
        files.push_back(Quenza::nativePath(start + name + ".png"));
    }
    return files;
}

PreviewScene& chosenScene(Host& host, const Arguments& arguments) {
    const std::string name = arguments.value("--scene").value_or("");
    if (PreviewScene* const scene = host.previewScenes().find(QUENZA_MATERIAL, name)) {
        return *scene;
    }
    const std::vector<std::string> known = host.previewScenes().names(QUENZA_MATERIAL);
    if (known.empty()) {
        throw HostError("The plug-in has no preview scenes");
    }
    throw UsageError("There is no preview scene \"" + name + "\"" + suggestion(name, known));
}

bool isBlack(const Image& image) {
    const size_t count = static_cast<size_t>(image.width()) * static_cast<size_t>(image.height()) * 3;
    return std::all_of(image.bytes(), image.bytes() + count,
                       [](uint8_t component) { return component == 0; });
}

/// "" when there is an image.
std::string failureOf(int32_t result, const Image& image) {
    if (result == RENDERRESULT_NOMACHINE) {
        return "there is none: its quality is \"none\", or it is a blend that lacks a material";
    }
    if (result != RENDERRESULT_OK) {
        return "the render failed";
    }
    return isBlack(image) ? "nothing was rendered: the renderer's library is missing" : "";
}

/// Renders a preview into a file. False, with an error line, when the material has none. Nothing after
/// Ctrl-C.
std::optional<bool> makeImage(Host& host, Material& material, PreviewScene& scene, const PreviewSize& size,
                              const std::filesystem::path& file) {
    if (!makesPreviews(material)) {
        throw HostError("The material \"" + material.name + "\" makes no previews");
    }
    Image image;
    const int32_t result = renderPreview(host, material, scene, size, image);
    if (result == RENDERRESULT_USERBREAK) {
        return std::nullopt;
    }
    const std::string failure = failureOf(result, image);
    if (!failure.empty()) {
        host.errors().print("No preview of \"" + material.name + "\": " + failure);
        return false;
    }
    saveImage(file, image, {});
    std::puts(("Image: " + Quenza::utf8Path(file)).c_str());
    return true;
}

} // namespace

ExitStatus previewMaterialsCommand(Host& host, const Arguments& arguments) {
    const std::filesystem::path target = targetImage(arguments);
    const PreviewSize size = previewSize(arguments);
    const std::optional<int32_t> wantedQuality = quality(arguments);
    openDocumentFile(host, arguments.operands.front());
    PreviewScene& scene = chosenScene(host, arguments);
    const std::vector<Material*> materials = wantedMaterials(*host.document(), arguments);
    const OutputFolder folder(target.parent_path());
    const std::vector<std::filesystem::path> files = imageFiles(materials, target);
    std::ranges::for_each(files, requireWritable);
    ExitStatus status = ExitStatus::done;
    for (size_t i = 0; i < materials.size(); ++i) {
        if (wantedQuality) {
            materials[i]->setParameter(DescID(QUALITY_PARAMETER), GeData(*wantedQuality));
        }
        const std::optional<bool> isMade = makeImage(host, *materials[i], scene, size, files[i]);
        if (!isMade) {
            return ExitStatus::interrupted;
        }
        status = *isMade ? status : ExitStatus::failed;
    }
    return status;
}

} // namespace headless
