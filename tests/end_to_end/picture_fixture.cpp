// SPDX-License-Identifier: MIT
#include "end_to_end/picture_fixture.h"

#include "end_to_end/plugin_folder.h"
#include "headless/documents/load_document.h"
#include "headless/model/handles.h"
#include "host/plugin_data.h"
#include "shared/plugin_ids.h"

#include <cstdlib>
#include <thread>

namespace fs = std::filesystem;
using namespace std::chrono_literals;

namespace {

constexpr auto ROUND = 50ms;
constexpr auto REAL_ROUND = 5ms;
constexpr auto STEP_LIMIT = 60s;

} // namespace

void Picture::Main() {
    headless::VideoPost* const videoPost = headless::renderingVideoPost(document_, 0);
    result = headless::renderDocument(document_, *videoPost, image, region_, flags_, Get());
}

std::vector<int> Picture::pixel(int32_t x, int32_t y) const {
    headless::Image copy;
    image.copyTo(copy);
    const uint8_t* const bytes = copy.bytes() + static_cast<size_t>(y * WIDTH + x) * 3;
    return {bytes, bytes + 3};
}

PictureFixture::PictureFixture() {
    plugin_ = placePlugin(folder());
    library_ = std::make_unique<capture::CapturingLibrary>(
        placeLibrary(folder(), "capturing_x64", "quenza_sdk.dll"));
    install(folder() / "nowhere");
}

PictureFixture::~PictureFixture() {
    stop();
}

void PictureFixture::removeLibrary() {
    const fs::path library = folder() / "quenza_x64" / "quenza_sdk.dll";
    if (fs::exists(library)) {
        // It's open: Windows lets nobody remove it.
        fs::rename(library, folder() / "quenza_x64" / "open.dll");
    }
}

fs::path PictureFixture::writeDocumentFile(const std::string& name, const std::string& settings) {
    writeFile(folder() / name,
              R"({"format": "quenza-headless-document", "version": 1,
        "objects": [{"type": "Cube", "name": "Cube", "tags": [{"type": "Texture", "material": "a"}]}],
        "materials": [{"id": "a", "name": "Bricks", "parameters": {"MATERIAL_COLOR_SHADER": "checks"},
                       "shaders": [{"type": "Checkerboard", "id": "checks"}]}],
        "renderData": [{"videoPosts": [{"type": 1020896, "parameters": {)" +
                  settings + "}}]}]}\n");
    return folder() / name;
}

void PictureFixture::startPlugin(const std::string& settings) {
    startHost(true).loadPlugin(plugin_);
    openFile(writeDocumentFile("document.json", settings));
    newLines();
}

std::unique_ptr<Picture> PictureFixture::begin(int32_t flags, std::optional<headless::RenderRegion> region) {
    auto picture = std::make_unique<Picture>(*host().document(), flags, region);
    EXPECT_TRUE(picture->Start());
    host().advance(0ms);
    return picture;
}

std::unique_ptr<Picture> PictureFixture::beginOn(headless::Document& document, int32_t flags) {
    auto picture = std::make_unique<Picture>(document, flags, std::nullopt);
    EXPECT_TRUE(picture->Start());
    host().advance(0ms);
    return picture;
}

void PictureFixture::round(double elapsedSeconds, double samplesPerPixel) {
    library()->setProgress(elapsedSeconds, samplesPerPixel);
    host().advance(ROUND);
}

void PictureFixture::await(const std::function<bool()>& done) {
    // The library's own threads take their time, while the clock goes on: not so fast that a render gives
    // them up.
    const auto limit = std::chrono::steady_clock::now() + STEP_LIMIT;
    while (!done()) {
        ASSERT_LT(std::chrono::steady_clock::now(), limit) << "it doesn't come";
        host().advance(ROUND);
        std::this_thread::sleep_for(REAL_ROUND);
    }
}

void PictureFixture::awaitImage(const Picture& picture, uint64_t changes) {
    await([&] { return picture.image.changes() >= changes; });
    EXPECT_EQ(picture.image.changes(), changes);
}

void PictureFixture::awaitEnd(const Picture& picture) {
    await([&] { return !picture.IsRunning(); });
    host().loop().runPosted();
}

void PictureFixture::end(Picture& picture) {
    picture.End(false);
    awaitEnd(picture);
}

GeDialog& PictureFixture::openToneMapping() {
    EXPECT_TRUE(host().executeCommand(PLUGINID_TONEMAPPING_COMMAND));
    return *host().dialogs().openDialogWith(SCALE);
}

void PictureFixture::makeLinear(float scale) {
    GeDialog& dialog = openToneMapping();
    EXPECT_TRUE(host().dialogs().enter(&dialog, METHOD, GeData(LINEAR)));
    EXPECT_TRUE(host().dialogs().enter(&dialog, SCALE, GeData(scale)));
    EXPECT_TRUE(host().dialogs().requestClose(&dialog));
}

bool PictureFixture::isEnabled(int32_t command) {
    const auto& data = host().registrations().find(command)->command;
    return (data->GetState(headless::toHost(host().document())) & CMD_ENABLED) != 0;
}

PictureFixture::Lines PictureFixture::statusTexts() {
    Lines texts;
    for (const std::string& shown : host().status().history()) {
        const size_t blank = shown.rfind(' ');
        const bool hasPercent = shown.ends_with('%') && blank != std::string::npos;
        const std::string text = hasPercent ? shown.substr(0, blank) : shown;
        if (texts.empty() || texts.back() != text) {
            texts.push_back(text);
        }
    }
    return texts;
}
