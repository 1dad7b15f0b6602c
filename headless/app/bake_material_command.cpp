// SPDX-License-Identifier: MIT
#include "headless/app/commands.h"

#include "foundation/native_path.h"
#include "headless/app/document_nodes.h"
#include "headless/app/output_folder.h"
#include "headless/app/plugin_numbers.h"
#include "headless/documents/save_document.h"

#include <charconv>
#include <cstdio>
#include <set>

namespace headless {

namespace {

// Gadgets of the plug-in's dialog.
constexpr int32_t BAKE_BUTTON = 10001;
constexpr int32_t FILE_FIELD = 10017;

struct NumberOption {
    std::string_view option;
    int32_t gadget;
    int32_t least;
};
constexpr NumberOption NUMBER_OPTIONS[] = {
    {"--width", 10011, 1}, {"--height", 10012, 1}, {"--border", 10013, 0}, {"--supersampling", 10020, 0}};

struct ChannelBox {
    std::string_view name;
    int32_t gadget;
};
constexpr ChannelBox CHANNEL_BOXES[] = {{"albedo", 10002},      {"sigma", 10007},    {"exponent", 10006},
                                        {"bump", 10004},        {"emission", 10003}, {"blend", 10008},
                                        {"displacement", 10005}};

constexpr int32_t LARGEST_NUMBER = 65536;

std::string needed(const Arguments& arguments, const char* option) {
    const std::optional<std::string> value = arguments.value(option);
    if (!value || value->empty()) {
        throw UsageError("materials bake needs " + std::string(option));
    }
    return *value;
}

std::filesystem::path imageFile(const Arguments& arguments) {
    const std::string file = needed(arguments, "--to");
    const std::filesystem::path path = std::filesystem::absolute(Quenza::nativePath(file)).lexically_normal();
    if (!path.has_filename()) {
        throw UsageError("--to needs a file, not the folder " + file);
    }
    return path;
}

/// Values for gadgets of the dialog, by its numbers.
std::vector<std::pair<int32_t, GeData>> dialogNumbers(const Arguments& arguments) {
    std::vector<std::pair<int32_t, GeData>> numbers;
    for (const NumberOption& entry : NUMBER_OPTIONS) {
        const std::optional<std::string> text = arguments.value(entry.option);
        if (!text) {
            continue;
        }
        int32_t number = 0;
        const char* const end = text->data() + text->size();
        const auto [stop, error] = std::from_chars(text->data(), end, number);
        if (error != std::errc() || stop != end || number < entry.least || number > LARGEST_NUMBER) {
            throw UsageError(std::string(entry.option) + " takes a whole number from " +
                             std::to_string(entry.least) + " to " + std::to_string(LARGEST_NUMBER) +
                             ", not \"" + *text + "\"");
        }
        numbers.emplace_back(entry.gadget, GeData(number));
    }
    return numbers;
}

/// The boxes that --channels names; nothing without it.
std::optional<std::set<std::string>> wantedChannels(const Arguments& arguments) {
    const std::optional<std::string> list = arguments.value("--channels");
    if (!list) {
        return std::nullopt;
    }
    std::vector<std::string> known;
    for (const ChannelBox& box : CHANNEL_BOXES) {
        known.emplace_back(box.name);
    }
    std::set<std::string> wanted;
    for (size_t start = 0; start <= list->size();) {
        const size_t end = std::min(list->find(',', start), list->size());
        const std::string name = list->substr(start, end - start);
        if (std::ranges::find(known, name) == known.end()) {
            throw UsageError("No channel \"" + name + "\" can be baked" + suggestion(name, known));
        }
        wanted.insert(name);
        start = end + 1;
    }
    return wanted;
}

/// The tag that puts the material on the object.
Tag& findTag(const Document& document, const std::string& objectName, const std::string& materialName) {
    const std::vector<Material*> materials = nodesNamed(materialName, materialsOf(document), "material");
    std::vector<Tag*> found;
    for (const Object* const object : nodesNamed(objectName, objectsOf(document), "object")) {
        for (Tag* tag = object->tags().first(); tag; tag = tag->next) {
            if (tag->type() == Ttexture &&
                std::ranges::find(materials, static_cast<TextureTagNode*>(tag)->material()) !=
                    materials.end()) {
                found.push_back(tag);
            }
        }
    }
    if (found.empty()) {
        throw UsageError("The object \"" + objectName + "\" has no texture tag with the material \"" +
                         materialName + "\"");
    }
    if (found.size() > 1) {
        throw UsageError("The material \"" + materialName + "\" lies " + std::to_string(found.size()) +
                         " times on objects \"" + objectName + "\": name them apart");
    }
    Tag& tag = *found.front();
    if (static_cast<TextureTagNode&>(tag).material()->type() != QUENZA_MATERIAL) {
        throw UsageError("The material \"" + materialName +
                         "\" is one of the host's: \"materials convert\" makes it one that can be baked");
    }
    if (tag.object()->type() != Opolygon) {
        throw UsageError("The object \"" + objectName + "\" is no polygon object, which alone can be baked");
    }
    return tag;
}

/// The user at the dialog: fills it in as the command line says, and presses the button.
class DialogUser {
public:
    DialogUser(Host& host, const Arguments& arguments, const std::filesystem::path& file)
        : host_(host), numbers_(dialogNumbers(arguments)), wanted_(wantedChannels(arguments)), file_(file) {}

    void use(GeDialog& dialog) {
        for (const ChannelBox& box : CHANNEL_BOXES) {
            tick(dialog, box);
        }
        if (failure_.empty() && ticked_ == 0) {
            failure_ = "The material has nothing to bake: none of its channels is on and has a shader";
        }
        if (!failure_.empty()) {
            host_.dialogs().requestClose(&dialog);
            return;
        }
        host_.dialogs().enter(&dialog, FILE_FIELD, GeData(String(Quenza::utf8Path(file_))));
        for (const auto& [gadget, value] : numbers_) {
            host_.dialogs().enter(&dialog, gadget, value);
        }
        host_.dialogs().press(&dialog, BAKE_BUTTON);
        // The plug-in takes the button away while it bakes.
        if (host_.dialogs().state(&dialog)->find(BAKE_BUTTON)->enabled) {
            failure_ = "The bake did not begin";
            host_.dialogs().requestClose(&dialog);
        }
    }

    const std::string& failure() const { return failure_; }
    /// How many channels are to be baked.
    size_t ticked() const { return ticked_; }

private:
    void tick(GeDialog& dialog, const ChannelBox& box) {
        const Gadget* const gadget = host_.dialogs().state(&dialog)->find(box.gadget);
        const bool isUsable = gadget && gadget->enabled;
        const bool isWanted = wanted_ ? wanted_->contains(std::string(box.name)) : isUsable;
        if (isWanted && !isUsable) {
            failure_ = "The material has no " + std::string(box.name) +
                       " to bake: the channel is off, or has no shader";
            return;
        }
        if (isUsable) {
            host_.dialogs().enter(&dialog, box.gadget, GeData(isWanted));
            ticked_ += isWanted ? 1 : 0;
        }
    }

    Host& host_;
    std::vector<std::pair<int32_t, GeData>> numbers_;
    std::optional<std::set<std::string>> wanted_;
    std::filesystem::path file_;
    std::string failure_;
    size_t ticked_ = 0;
};

/// The images that materials made since show.
std::vector<std::string> bakedImages(const Document& document, const std::vector<Material*>& earlier,
                                     const std::filesystem::path& file) {
    const std::string start = Quenza::utf8Path(std::filesystem::path(file).replace_extension()) + "_";
    std::vector<std::string> images;
    for (const Material* const material : materialsOf(document)) {
        if (std::ranges::find(earlier, material) != earlier.end()) {
            continue;
        }
        for (const Shader* shader = material->shaders().first(); shader; shader = shader->next) {
            const std::string image = shader->data.GetFilename(BITMAPSHADER_FILENAME).GetUtf8();
            if (shader->type() == Xbitmap && image.starts_with(start)) {
                images.push_back(image);
            }
        }
    }
    std::ranges::sort(images);
    return images;
}

} // namespace

ExitStatus bakeMaterialCommand(Host& host, const Arguments& arguments) {
    const std::string target = saveTarget(arguments);
    const std::string objectName = needed(arguments, "--object");
    const std::string materialName = needed(arguments, "--material");
    const std::filesystem::path file = imageFile(arguments);
    const OutputFolder folder(file.parent_path());
    DialogUser user(host, arguments, file);
    const std::optional<int32_t> unit = openDocumentFile(host, arguments.operands.front(), folderOf(target));
    Document& document = *host.document();
    Tag& tag = findTag(document, objectName, materialName);
    if (host.wasInterrupted()) {
        return ExitStatus::interrupted;
    }
    const std::vector<Material*> earlier = materialsOf(document);
    tag.info |= BIT_ACTIVE;
    host.user().addDialogActions({{.kind = UserAction::Kind::use,
                                   .value = GeData(),
                                   .use = [&user](GeDialog& dialog) { user.use(dialog); }}});
    const bool opened = host.executeCommand(BAKE_MATERIAL);
    if (host.wasInterrupted()) {
        return ExitStatus::interrupted;
    }
    if (!opened || !user.failure().empty()) {
        throw HostError(opened ? user.failure() : "The plug-in's dialog did not open");
    }
    const std::vector<std::string> images = bakedImages(document, earlier, file);
    if (images.size() < user.ticked()) {
        throw HostError(
            std::to_string(user.ticked() - images.size()) + " of " + std::to_string(user.ticked()) +
            " channels could not be baked: a program can't be, nor can an image that may not be written " +
            "there or is too large");
    }
    if (arguments.has("--hide-original")) {
        tag.object()->renderMode = MODE_OFF;
    }
    saveDocument(document, target, unit);
    for (const std::string& image : images) {
        std::puts(("Image: " + image).c_str());
    }
    return ExitStatus::done;
}

} // namespace headless
