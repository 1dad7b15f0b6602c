// SPDX-License-Identifier: MIT
#include "reading/xml_element_reader.h"

#include "reading/xml_document.h"
#include "reading/xml_values.h"
#include "support/temp_dir.h"
#include "support/thrown_message.h"

#include <gtest/gtest.h>
#include <tinyxml.h>

#include <string>
#include <vector>

namespace Quenza {
namespace {

/// Place, name and text of an element and of those in it.
void describe(const TiXmlElement& element, std::string& out) {
    out += SceneParseUtils::errorContext(element);
    for (const TiXmlNode* child = element.FirstChild(); child; child = child->NextSibling()) {
        if (const TiXmlElement* const inner = child->ToElement())
            describe(*inner, out);
        else if (child->ToText())
            out += child->ValueStr();
    }
    out += "\n";
}

TEST(XMLElementReader, GivesWhatTheWholeDocumentHas) {
    const TempDir folder;
    const String path = folder / "scene.qzs";
    writeBytes(path,
               "\xEF\xBB\xBF<?xml version='1.0'?>\r\n"
               "<!-- <a> -->\n"
               "<scene d='1'>text<a/><b>\n"
               "  <a>x<!-- <a/>\n -->y</a>\t<c e='<f>'/></b> text <!-- <a> --> more <d>\xC3\xA4<e/></d>\n\n"
               "<a><![CDATA[<b>]]><b/></a></scene>\n<!-- end -->");
    XMLDocument document;
    document.loadDocument(path);
    std::string expected;
    for (const TiXmlElement* child = document.rootElement().FirstChildElement(); child;
         child = child->NextSiblingElement())
        describe(*child, expected);

    XMLElementReader reader(path);
    EXPECT_EQ(reader.rootName(), "scene");
    std::string read;
    while (const TiXmlElement* const element = reader.next())
        describe(*element, read);
    EXPECT_EQ(read, expected);
    EXPECT_NE(read.find("(In element 'd', around line 5, column 53)"), std::string::npos) << read;
    EXPECT_EQ(reader.next(), nullptr);
}

TEST(XMLElementReader, LooksAtTheWholeTextBeforehand) {
    const TempDir folder;
    const String path = folder / "scene.qzs";
    writeBytes(path, "<scene>\n<a/>\n<b b='1' b='2'/></scene>");
    EXPECT_EQ(thrownMessage<QuenzaXMLDocExcep>([&] { XMLElementReader reader(path); }),
              "failed to load XML doc from path '" + path.toStdString() +
                  "': Error parsing Element.  (Line 3, column 10.)");
}

} // namespace
} // namespace Quenza
