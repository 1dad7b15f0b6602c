// SPDX-License-Identifier: MIT
#include "render/render_queue.h"

#include "export/frame_file_name.h"
#include "render/xml_file.h"

#include <cstdio>
#include <tinyxml.h>

namespace {

TiXmlElement* appendElement(TiXmlElement* parent, const char* name) {
    return parent->LinkEndChild(new TiXmlElement(name))->ToElement();
}

void appendText(TiXmlElement* item, const char* name, const std::string& text) {
    appendElement(item, name)->LinkEndChild(new TiXmlText(text));
}

std::string formatLimit(float value) {
    char text[64];
    std::snprintf(text, sizeof text, "%08f", static_cast<double>(value));
    return text;
}

} // namespace

RenderQueue::RenderQueue() : document_(std::make_unique<TiXmlDocument>()) {
    document_->LinkEndChild(new TiXmlDeclaration("1.0", "utf-8", ""));
    root_ = document_->LinkEndChild(new TiXmlElement("render_queue"))->ToElement();
}

RenderQueue::~RenderQueue() = default;

void RenderQueue::addFrame(const RenderJob& job, int32_t frame, const Filename& scenePath, int32_t seed) {
    TiXmlElement* const item = appendElement(root_, "item");
    appendText(item, "scene_path", scenePath.GetUtf8());
    if (job.launch.outputFile.Content()) {
        Filename stem = job.launch.outputFile;
        stem.ClearSuffix();
        appendText(item, "output_path", frameFileName(stem.GetString(), frame, true, "").GetUtf8());
    }
    appendText(item, "halt_time", formatLimit(job.haltTime));
    appendText(item, "halt_spp", formatLimit(job.haltSamplesPerPixel));
    appendText(item, "seed", std::to_string(seed));
}

bool RenderQueue::save(const Filename& path) const {
    return saveXmlDocument(*document_, path);
}
