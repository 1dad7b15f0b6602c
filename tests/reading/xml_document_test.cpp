// SPDX-License-Identifier: MIT
#include "reading/xml_document.h"

#include "reading/xml_values.h"
#include "support/system_texts.h"
#include "support/temp_dir.h"
#include "support/thrown_message.h"

#include <gtest/gtest.h>
#include <tinyxml.h>

#include <string>

namespace Quenza {
namespace {

std::string loadMessage(const String& path) {
    XMLDocument document;
    return thrownMessage<QuenzaXMLDocExcep>([&] { document.loadDocument(path); });
}

TEST(XMLDocument, TellsWhyAFileIsNoDocument) {
    const TempDir folder;
    const String path = folder / "scene.qzs";
    const std::string quoted = "'" + path.toStdString() + "'";
    EXPECT_EQ(loadMessage(path), "Failed to open XML doc from path " + quoted + ": " + noSuchFile());
    EXPECT_EQ(loadMessage(folder.path()),
              "Failed to open XML doc from path '" + folder.path().toStdString() + "': " + isFolder());
    const std::string device = PlatformUtils::SEPARATOR == '\\' ? "NUL" : "/dev/zero";
    EXPECT_EQ(loadMessage(device), "Failed to open XML doc from path '" + device + "': not a file");
    writeBytes(path, "<scene>\n  <mesh></scene>");
    EXPECT_EQ(loadMessage(path),
              "failed to load XML doc from path " + quoted + ": Error reading end tag.  (Line 2, column 9.)");
    writeBytes(path, "");
    EXPECT_EQ(loadMessage(path),
              "failed to load XML doc from path " + quoted + ": Error document empty.  (Line 1, column 1.)");
    writeBytes(path, "<!-- nothing -->");
    EXPECT_EQ(loadMessage(path), "Could not root element in file " + quoted + "  (Line 1, column 17.)");
}

TEST(XMLDocument, TakesAllLineEndsForOne) {
    XMLDocument document;
    document.parseText("<a>\r\n<b><![CDATA[1\r\n\r2]]></b>\r<c/></a>\r", "text");
    const TiXmlElement& root = document.rootElement();
    EXPECT_EQ(SceneParseUtils::parseString(root, "b"), "1\n\n2");
    EXPECT_EQ(SceneParseUtils::errorContext(SceneParseUtils::childElement(root, "c")),
              "  (In element 'c', around line 5, column 1)");
}

} // namespace
} // namespace Quenza
