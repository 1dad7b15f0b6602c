// SPDX-License-Identifier: MIT
#include "end_to_end/session.h"

#include "headless/model/document.h"
#include "headless/model/handles.h"
#include "headless/model/object.h"
#include "host/document.h"
#include "host/ids.h"
#include "host/object.h"
#include "res/description/Oquenzainstance.h"
#include "shared/plugin_ids.h"

namespace {

using Lines = std::vector<std::string>;

class PluginCommands : public Session {
protected:
    BaseDocument* document() { return headless::toHost(host().document()); }
    /// The tree, children in brackets; instances with what they link to.
    std::string outline(const BaseObject* object) {
        std::string text;
        for (; object; object = object->GetNext()) {
            text += text.empty() ? "" : ", ";
            text += object->GetName().GetUtf8();
            if (object->GetType() == PLUGINID_INSTANCE) {
                const BaseObject* const link =
                    object->GetDataInstance()->GetObjectLink(INSTANCE_LINK, document());
                text += " -> " + (link ? link->GetName().GetUtf8() : "nothing");
            }
            if (const BaseObject* const child = object->GetDown()) {
                text += " [" + outline(child) + "]";
            }
        }
        return text;
    }
    std::string outline() { return outline(document()->GetFirstObject()); }
};

TEST_F(PluginCommands, CreateInstancesBehindWhatIsSelected) {
    openDocument(R"({"type": "Null", "name": "Group", "position": [0, 10, 0], "children": [
                         {"type": "Cube", "name": "Box", "position": [1, 2, 3]}, {"type": "Sphere", "name": "Ball"}]},
                    {"type": "Plane", "name": "Floor", "tags": [{"type": "Phong"}]})");
    const std::string before = outline();
    ASSERT_TRUE(host().executeCommand(PLUGINID_CREATE_INSTANCES_COMMAND));
    EXPECT_EQ(host().messages(), Lines{"Select the objects that are to get instances."});
    EXPECT_EQ(outline(), before);

    BaseObject* const group = document()->GetFirstObject();
    for (BaseObject* const object : {group, group->GetDown(), group->GetNext()}) {
        object->SetBit(BIT_ACTIVE);
    }
    group->GetNext()->GetFirstTag()->SetBit(BIT_ACTIVE);
    ASSERT_TRUE(host().executeCommand(PLUGINID_CREATE_INSTANCES_COMMAND));
    EXPECT_EQ(
        outline(),
        "Group [Box, Box Instance -> Box, Ball], Group Instance -> Group, Floor, Floor Instance -> Floor");
    const Matrix place = group->GetDown()->GetNext()->GetMg();
    EXPECT_EQ(place.off.x, 1.0f);
    EXPECT_EQ(place.off.y, 12.0f);
    EXPECT_EQ(host().messages().size(), 1u);
    ASSERT_TRUE(document()->DoUndo());
    EXPECT_EQ(outline(), before);
}

TEST_F(PluginCommands, AboutTellsTheVersionAndWhatRenders) {
    start();
    ASSERT_TRUE(host().executeCommand(PLUGINID_ABOUT_COMMAND));
    ASSERT_EQ(host().messages().size(), 1u);
    const std::string text = host().messages()[0];
    EXPECT_TRUE(text.starts_with(
        "Quenza for Cinema 4D 3.6.24\n\nExports documents to the Quenza spectral renderer and "
        "renders them with it.\nRendering inside Cinema 4D: "))
        << text;
    EXPECT_TRUE(text.ends_with("\n\nDeveloped by: The Quenza for Cinema 4D developers")) << text;
}

} // namespace
