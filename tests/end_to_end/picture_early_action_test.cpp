// SPDX-License-Identifier: MIT
// Actions on a render whose time comes before the render can take them.
#include "end_to_end/programs.h"

#include "headless/images/image_files.h"

#include <algorithm>

using headless::Image;

namespace {

class PictureEarlyAction : public Programs {
protected:
    std::string imagePath() const { return (folder() / "image.png").string(); }
    int picture(const std::string& more) {
        return headless("picture " QUENZA_SOURCE_DIR "/examples/light-layers.json --size 36x24 --image " +
                        imagePath() + " " + more);
    }
    /// Of all bytes of the image.
    int brightest() const {
        Image image;
        EXPECT_EQ(headless::readImage(imagePath(), image), IMAGERESULT_OK);
        const ptrdiff_t count = ptrdiff_t{3} * image.width() * image.height();
        return count == 0 ? -1 : *std::max_element(image.bytes(), image.bytes() + count);
    }
};

} // namespace

TEST_F(PictureEarlyAction, WaitsForTheRender) {
    const std::string limit = "--set RS_HALT_SPP=200 ";
    ASSERT_EQ(picture(limit + "--at 0 layer 0 off --at 0 layer 1 gain=0"), 0) << errors;
    EXPECT_EQ(brightest(), 0) << "both lamps are off";
    ASSERT_EQ(picture(limit + "--at 0 tonemap linear scale=1e-6"), 0) << errors;
    EXPECT_LT(brightest(), 10);
    ASSERT_EQ(picture("--set RS_HALT_SPP=-1 --at 0 pause --at 1s stop"), 0) << errors;
    EXPECT_NE(errors.find("Paused: "), std::string::npos) << errors;
}

TEST_F(PictureEarlyAction, IsToldWhenTheRenderTakesNone) {
    EXPECT_EQ(picture("--interactive --at 0 layer 0 off"), 1);
    EXPECT_NE(errors.find("quenza-headless: Not everything was done: --at 0 layer 0 off: the render took no "
                          "commands until its end\n"),
              std::string::npos)
        << errors;
    EXPECT_GT(brightest(), 30) << "the image was made all the same";
}
