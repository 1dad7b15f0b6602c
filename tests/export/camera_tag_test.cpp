// SPDX-License-Identifier: MIT
#include "export/tags/camera_tag.h"

#include "export/exporter_fixture.h"
#include "headless/model/document.h"
#include "headless/model/handles.h"
#include "headless/model/view.h"
#include "host/basedraw.h"
#include "host/ids.h"
#include "shared/parameter_ids.h"
#include "shared/plugin_ids.h"

namespace {

class CameraTagTest : public ExporterTest {
protected:
    CameraTagTest() {
        BaseContainer& settings = *document()->GetActiveRenderData()->GetDataInstance();
        settings.SetLong(RDATA_XRES, 1000);
        settings.SetLong(RDATA_YRES, 500);
        // Above and below the safe frame of 800 by 400 pixels the view goes on for 100.
        view().width = 800;
        view().height = 600;
        setRegion(true);
    }

    headless::View& view() { return host().document()->view(); }
    void setRegion(bool isOn) { tag_->GetDataInstance()->SetBool(CAM_RENDER_REGION, isOn); }
    void lookThrough(BaseObject* camera) {
        view().setSceneCamera(camera ? headless::fromHost(camera) : nullptr);
    }
    BaseObject* camera() { return camera_; }
    BaseContainer& data() { return *tag_->GetDataInstance(); }
    const std::vector<headless::DrawnShape>& draw() {
        view().drawn.clear();
        BaseDrawHelp help;
        help.document = document();
        EXPECT_TRUE(CameraTag().Draw(tag_, camera_, headless::toHost(&view()), &help));
        return view().drawn;
    }

private:
    BaseObject* camera_ = add(Ocamera, "camera");
    BaseTag* tag_ = addTag(camera_, PLUGINID_CAMERA_TAG);
};

} // namespace

TEST_F(CameraTagTest, FramesTheRegionOnTheSafeFrameInRed) {
    data().SetLong(CAM_REGION_X1, 100);
    data().SetLong(CAM_REGION_X2, 500);
    data().SetLong(CAM_REGION_Y1, 50);
    data().SetLong(CAM_REGION_Y2, 450);
    lookThrough(camera());
    const std::vector<headless::DrawnShape>& lines = draw();
    ASSERT_EQ(lines.size(), 4u);
    const Vector corners[] = {{80, 140, 0}, {400, 140, 0}, {400, 460, 0}, {80, 460, 0}};
    for (size_t i = 0; i < 4; ++i) {
        EXPECT_TRUE(lines[i].inPixels);
        EXPECT_EQ(lines[i].colour, Vector(1, 0, 0));
        ASSERT_EQ(lines[i].points.size(), 2u);
        for (size_t end = 0; end < 2; ++end) {
            const Vector& expected = corners[(i + end) % 4];
            EXPECT_NEAR(lines[i].points[end].x, expected.x, 1.0f) << i;
            EXPECT_NEAR(lines[i].points[end].y, expected.y, 1.0f) << i;
        }
    }
}

TEST_F(CameraTagTest, DrawsOnlyInTheViewOfItsCameraWhileTheRegionIsOn) {
    EXPECT_TRUE(draw().empty()) << "the view's own camera";
    lookThrough(add(Ocamera, "other"));
    EXPECT_TRUE(draw().empty()) << "another camera";
    lookThrough(camera());
    EXPECT_EQ(draw().size(), 4u);
    setRegion(false);
    EXPECT_TRUE(draw().empty()) << "without a region";
}
