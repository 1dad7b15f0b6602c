// SPDX-License-Identifier: MIT
#include "reading/scene_parser.h"

#include "foundation/file_utils.h"
#include "reading/element_readers.h"
#include "reading/model_loader.h"
#include "reading/node_numbering.h"
#include "reading/settings_parser.h"
#include "reading/xml_document.h"
#include "reading/xml_element_reader.h"
#include "reading/xml_values.h"
#include "scene/scene_node_background_settings.h"

#include <string>
#include <tinyxml.h>
#include <utility>

namespace Quenza {

namespace xml = SceneParseUtils;

namespace {

/// Whatever the readers throw leaves as the one exception, with the same text.
template <class Action>
auto asParserExcep(const std::string& prefix, const Action& action) {
    try {
        return action();
    } catch (const MessageExcep& e) {
        throw QuenzaModelParserExcep(prefix + e.message());
    }
}

Ref<SceneNodeRenderSettings> settingsOfConfig(const ParserState& state, const XMLDocument& document) {
    const TiXmlElement& config = document.rootElementNamed("config");
    return parseRenderSettings(state, xml::childElement(config, "renderer_settings"));
}

/// A text that somebody typed without its elements would go by in silence.
void checkHoldsElementsOnly(const TiXmlElement& element) {
    for (const TiXmlNode* child = element.FirstChild(); child; child = child->NextSibling())
        if (child->ToText() && child->ValueTStr().find_first_not_of(" \t\r\n") != std::string::npos)
            throwParserError("Found unexpected text '" + child->ValueTStr() + "'", element);
}

bool isSettings(const Ref<SceneNode>& node) {
    return node->getType() == NODE_RENDER_SETTINGS;
}

void addBackgroundIfMissing(NodeList& nodes) {
    for (const Ref<SceneNode>& node : nodes)
        if (node->getType() == NODE_BACKGROUND_SETTINGS)
            return;
    nodes.push_back(new SceneNodeBackgroundSettings);
}

/// Puts the merged settings in the place of the first ones, with their UID and name. The others are gone:
/// they were layers.
void replaceSettings(NodeList& nodes, const Ref<SceneNodeRenderSettings>& merged) {
    NodeList kept;
    bool is_placed = false;
    for (const Ref<SceneNode>& node : nodes) {
        if (!isSettings(node)) {
            kept.push_back(node);
        } else if (!is_placed) {
            node->copyBaseFieldsTo(*merged);
            kept.push_back(merged);
            is_placed = true;
        }
    }
    if (!is_placed)
        kept.push_back(merged);
    nodes = std::move(kept);
}

} // namespace

void QuenzaModelParser::parseScene(Ref<SceneNodeRoot>& root, const String& scene_path, const Context& context,
                                   const String& extra_settings) {
    installModelLoader();
    asParserExcep("", [&] {
        NodeList nodes = readSceneFile(scene_path);
        addBackgroundIfMissing(nodes);
        completeSettings(nodes, context, extra_settings);
        const Ref<SceneNodeRoot> scene = new SceneNodeRoot;
        addNumberedNodes(*scene, nodes);
        root = scene;
    });
}

NodeList QuenzaModelParser::readSceneFile(const String& scene_path) {
    setScenePath(scene_path);
    XMLElementReader scene(scene_path);
    if (scene.rootName() != "scene")
        throw QuenzaModelParserExcep("Invalid root element '" + scene.rootName() + "'");
    return readChildren(scene);
}

NodeList QuenzaModelParser::readChildren(XMLElementReader& file) {
    NodeList nodes;
    while (const TiXmlElement* const element = file.next())
        readElement(*element, nodes);
    return nodes;
}

void QuenzaModelParser::parseMaterialFile(Ref<SceneNodeRoot>& root, const String& path) {
    installModelLoader();
    asParserExcep("", [&] {
        setScenePath(path);
        XMLElementReader file(path);
        if (file.rootName() != "scenedata" && file.rootName() != "scene")
            throw QuenzaModelParserExcep("Invalid root element '" + file.rootName() + "'");
        const Ref<SceneNodeRoot> made = new SceneNodeRoot;
        addNumberedNodes(*made, readChildren(file));
        made->finalise(path);
        root = made;
    });
}

void QuenzaModelParser::setScenePath(const String& path) {
    state_.scene_dir = FileUtils::getDirectory(path);
    includes_.setSceneFile(path);
}

void QuenzaModelParser::parseElement(const TiXmlElement& element, NodeList& nodes) {
    asParserExcep("", [&] { readElement(element, nodes); });
}

void QuenzaModelParser::readElement(const TiXmlElement& element, NodeList& nodes) {
    if (!isInclude(element)) {
        readNodeElement(state_, element, nodes);
        return;
    }
    const std::size_t depth = includes_.depth();
    try {
        includes_.open(element, state_);
        while (includes_.depth() > depth) {
            const TiXmlElement* const child = includes_.next(state_);
            if (child && isInclude(*child))
                includes_.open(*child, state_);
            else if (child)
                readNodeElement(state_, *child, nodes);
        }
    } catch (const QuenzaXMLDocExcep&) { // names its file
        includes_.closeTo(depth, state_);
        throw;
    } catch (const MessageExcep& e) {
        const String message = e.message() + includes_.errorContext();
        includes_.closeTo(depth, state_);
        throw QuenzaModelParserExcep(message);
    } catch (...) {
        includes_.closeTo(depth, state_);
        throw;
    }
}

void QuenzaModelParser::completeSettings(NodeList& nodes, const Context& context,
                                         const String& extra_settings) {
    const Ref<SceneNodeRenderSettings> settings = new SceneNodeRenderSettings;
    const auto merge = [&](const Ref<SceneNodeRenderSettings>& layer) { mergeSettings(*settings, *layer); };
    if (!context.base_directory.empty())
        merge(readIniSettings(context.base_directory));
    for (const Ref<SceneNode>& node : nodes)
        if (isSettings(node))
            merge(static_cast<SceneNodeRenderSettings*>(node.getPointer()));
    if (!extra_settings.empty())
        merge(readExtraSettings(extra_settings));

    if (state_.white_point_x != 0 || state_.white_point_y != 0)
        settings->setWhitePoint(new WhitePoint(state_.white_point_x, state_.white_point_y));
    if (settings->layer_settings.empty())
        for (const String& name : state_.layer_names)
            settings->addLayer(new LayerSetting(name));
    replaceSettings(nodes, settings);
}

Ref<SceneNodeRenderSettings> QuenzaModelParser::readIniFile(const String& directory) {
    return asParserExcep("", [&] { return readIniSettings(directory); });
}

Ref<SceneNodeRenderSettings> QuenzaModelParser::readIniSettings(const String& directory) {
    return asParserExcep("Error reading inifile.xml: ", [&] {
        XMLDocument document;
        document.loadDocument(FileUtils::join(directory, "inifile.xml"));
        return settingsOfConfig(state_, document);
    });
}

Ref<SceneNodeRenderSettings> QuenzaModelParser::readExtraSettings(const String& text) {
    return asParserExcep("Error while parsing '--settings' argument: ", [&] {
        XMLDocument document;
        const String whole = R"(<?xml version="1.0" encoding="utf-8"?><config><renderer_settings>)" + text +
                             "</renderer_settings></config>";
        document.parseText(whole.view(), "--settings");
        checkHoldsElementsOnly(xml::childElement(document.rootElement(), "renderer_settings"));
        return settingsOfConfig(state_, document);
    });
}

} // namespace Quenza
