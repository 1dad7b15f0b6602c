// SPDX-License-Identifier: MIT
#include "reading/queue_report.h"

#include "reading/xml_document.h"
#include "reading/xml_values.h"

#include <tinyxml.h>

namespace Quenza {

namespace {

QueueItem parseItem(const TiXmlElement& element) {
    using namespace SceneParseUtils;
    QueueItem item;
    item.scene_path = parseString(element, "scene_path");
    item.output_path = parseOptionalString(element, "output_path", "");
    item.halt_time = parseOptionalDouble(element, "halt_time", item.halt_time);
    item.halt_spp = parseOptionalDouble(element, "halt_spp", item.halt_spp);
    item.seed = parseOptionalString(element, "seed", "");
    if (item.scene_path.empty())
        throw SceneParseUtilsExcep("the item names no scene" + errorContext(element));
    return item;
}

} // namespace

QueueSummary summariseQueue(const std::string& path) {
    QueueSummary summary;
    summary.path = path;
    XMLDocument document;
    try {
        document.loadDocument(path);
        const TiXmlElement& queue = document.rootElementNamed("render_queue");
        for (const TiXmlElement* element = queue.FirstChildElement("item"); element;
             element = element->NextSiblingElement("item")) {
            try {
                summary.items.push_back(parseItem(*element));
            } catch (const MessageExcep& excep) {
                summary.faults.emplace_back(excep.what());
            }
        }
    } catch (const MessageExcep& excep) {
        summary.faults.emplace_back(excep.what());
        return summary;
    }
    if (summary.items.empty() && summary.faults.empty())
        summary.faults.emplace_back("the queue has no item");
    return summary;
}

} // namespace Quenza
