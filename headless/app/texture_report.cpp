// SPDX-License-Identifier: MIT
#include "headless/app/texture_report.h"

#include "headless/app/document_nodes.h"
#include "headless/images/image_files.h"
#include "headless/model/handles.h"
#include "headless/runtime/described_parameter.h"
#include "headless/runtime/files.h"
#include "headless/runtime/texture_search.h"
#include "headless/shaders/shader_ids.h"

#include <map>
#include <set>

namespace headless {

namespace {

struct StandardChannel {
    int32_t link;
    /// The channel's switch; 0 for one that is always in use.
    int32_t use;
    const char* name;
};
constexpr StandardChannel STANDARD_CHANNELS[] = {
    {MATERIAL_COLOR_SHADER, 0, "Color"},
    {MATERIAL_LUMINANCE_SHADER, MATERIAL_USE_LUMINANCE, "Luminance"},
    {MATERIAL_BUMP_SHADER, MATERIAL_USE_BUMP, "Bump"},
    {MATERIAL_ALPHA_SHADER, MATERIAL_USE_ALPHA, "Alpha"},
    {MATERIAL_SPECULAR_SHADER, MATERIAL_USE_SPECULARCOLOR, "Specular Color"},
    {MATERIAL_DISPLACEMENT_SHADER, MATERIAL_USE_DISPLACEMENT, "Displacement"},
    {MATERIAL_NORMAL_SHADER, MATERIAL_USE_NORMAL, "Normal"}};

/// Calls `visit` for each node that `node` links to.
template <typename Visit>
void visitTargets(Node& node, Visit visit) {
    node.visitLinks([&visit](const BaseLink& link) {
        if (Node* const target = fromHost(link.GetLink())) {
            visit(*target);
        }
    });
}

/// Materials that take part in a picture.
std::set<const Node*> usedMaterials(const Document& document) {
    std::set<const Node*> used;
    std::vector<Node*> waiting;
    const auto take = [&](Node& target) {
        if (target.kind() == NodeKind::material && used.insert(&target).second) {
            waiting.push_back(&target);
        }
    };
    for (Object* const object : objectsOf(document)) {
        for (Tag* tag = object->tags().first(); tag; tag = tag->next) {
            if (tag->type() == Ttexture) {
                visitTargets(*tag, take);
            }
        }
    }
    for (const RenderDataNode* setup = document.renderData().first(); setup; setup = setup->next) {
        for (VideoPost* videoPost = setup->videoPosts().first(); videoPost; videoPost = videoPost->next) {
            visitTargets(*videoPost, take);
        }
    }
    while (!waiting.empty()) {
        Node* const material = waiting.back();
        waiting.pop_back();
        visitTargets(*material, take);
    }
    return used;
}

/// The bitmap shaders at and below a shader, each once, in the order of the links.
std::vector<const Node*> bitmapsOf(Node& shader) {
    std::vector<const Node*> bitmaps;
    std::set<const Node*> seen{&shader};
    std::vector<Node*> waiting{&shader};
    for (size_t i = 0; i < waiting.size(); ++i) {
        Node* const node = waiting[i];
        if (node->type() == Xbitmap) {
            bitmaps.push_back(node);
        }
        visitTargets(*node, [&](Node& target) {
            if (target.kind() == NodeKind::shader && seen.insert(&target).second) {
                waiting.push_back(&target);
            }
        });
    }
    return bitmaps;
}

/// Empty for an image that is all right.
std::string readingFault(const std::filesystem::path& file) {
    Image image;
    switch (readImage(file, image)) {
    case IMAGERESULT_OK:
        return "";
    case IMAGERESULT_OUTOFMEMORY:
        return "there is not enough memory for it";
    case IMAGERESULT_WRONGTYPE:
        return "it is no image of a kind that this program knows";
    default:
        return "it is damaged, or may not be read";
    }
}

class Report {
public:
    explicit Report(const Document& document) : document_(document) {}

    std::vector<std::string> run() {
        const std::set<const Node*> used = usedMaterials(document_);
        for (Material* const material : materialsOf(document_)) {
            if (used.contains(material)) {
                addMaterial(*material);
            }
        }
        return std::move(lines_);
    }

private:
    /// Lines about one link, before it is known whether and how the channel shows.
    using Faults = std::map<int32_t, std::vector<std::string>>;

    void addMaterial(Material& material) {
        Faults faults;
        for (int32_t i = 0; i < material.data.GetCount(); ++i) {
            const GeData& value = material.data.GetIndexData(i);
            Node* const target = value.GetType() == DA_LINK ? fromHost(value.GetLink()) : nullptr;
            if (!target || target->kind() != NodeKind::shader) {
                continue;
            }
            for (const Node* const bitmap : bitmapsOf(*target)) {
                if (std::string fault = faultOf(*bitmap); !fault.empty()) {
                    faults[material.data.GetIndexId(i)].push_back(std::move(fault));
                }
            }
        }
        if (faults.empty()) {
            return;
        }
        if (material.type() == Mmaterial) {
            addStandard(material, faults);
        } else {
            addDescribed(material, faults);
        }
    }

    void addStandard(const Material& material, const Faults& faults) {
        for (const StandardChannel& channel : STANDARD_CHANNELS) {
            if (channel.use == 0 || material.data.GetBool(channel.use)) {
                addLines(material, channel.name, faults, channel.link);
            }
        }
    }

    void addDescribed(Material& material, const Faults& faults) {
        for (const DescribedParameter& parameter : describe(toHost(&material))) {
            if (!parameter.hidden) {
                addLines(material, parameter.group, faults, parameter.id);
            }
        }
    }

    void addLines(const Material& material, const std::string& channel, const Faults& faults, int32_t link) {
        const auto found = faults.find(link);
        if (found == faults.end()) {
            return;
        }
        for (const std::string& fault : found->second) {
            std::string line = "Material \"" + material.name + "\", " + channel + ": " + fault;
            if (told_.insert(line).second) {
                lines_.push_back(std::move(line));
            }
        }
    }

    /// Empty for a texture that is all right.
    const std::string& faultOf(const Node& bitmap) {
        const Filename name = bitmap.data.GetFilename(BITMAPSHADER_FILENAME);
        const auto [known, isNew] = faults_.try_emplace(name.GetUtf8());
        if (isNew) {
            known->second = judge(name);
        }
        return known->second;
    }

    std::string judge(const Filename& name) const {
        if (!name.Content()) {
            return "a texture names no file";
        }
        Filename found;
        if (!findTexture(document_.path, name, Filename(), &found)) {
            return "the texture " + name.GetUtf8() + " was not found";
        }
        const Filename& file = found.Content() ? found : name;
        const std::string reason = readingFault(files::pathOf(file));
        return reason.empty() ? "" : "the texture " + file.GetUtf8() + " can't be read: " + reason;
    }

    const Document& document_;
    std::map<std::string, std::string> faults_;
    std::set<std::string> told_;
    std::vector<std::string> lines_;
};

} // namespace

std::vector<std::string> textureFaults(const Document& document) {
    return Report(document).run();
}

} // namespace headless
