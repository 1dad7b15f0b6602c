// SPDX-License-Identifier: MIT
#pragma once

#include "end_to_end/session.h"

#include "headless/render/document_render.h"
#include "host/thread.h"
#include "support/capturing_library.h"

#include <functional>
#include <memory>
#include <optional>

/// A render of the host on a thread of its own, into an image of a few pixels.
class Picture : public C4DThread {
public:
    static constexpr int32_t WIDTH = 8;
    static constexpr int32_t HEIGHT = 6;

    Picture(headless::Document& document, int32_t flags, std::optional<headless::RenderRegion> region)
        : document_(document), flags_(flags), region_(region) {}
    ~Picture() override { End(); }

    void Main() override;
    const char* GetThreadName() override { return "Picture"; }

    /// Three bytes, rows from the top.
    std::vector<int> pixel(int32_t x, int32_t y) const;

    headless::RenderImage image{WIDTH, HEIGHT};
    /// Of the render, once the thread has ended.
    int32_t result = -1;

private:
    headless::Document& document_;
    int32_t flags_;
    std::optional<headless::RenderRegion> region_;
};

/// The plug-in on the capturing library and a clock that the test moves.
class PictureFixture : public Session {
protected:
    using Lines = std::vector<std::string>;
    /// In the tone mapping dialog.
    static constexpr int32_t METHOD = 6007;
    static constexpr int32_t LINEAR = 6012;
    static constexpr int32_t SCALE = 6013;

    PictureFixture();
    ~PictureFixture() override;

    /// With a document of a cube with a baked texture and the video post with these settings.
    void startPlugin(const std::string& settings = R"("RS_HALT_SPP": -1)");
    /// The text of such a document goes to the file.
    std::filesystem::path writeDocumentFile(const std::string& name, const std::string& settings);

    /// Starts a render, and waits until it sleeps or has ended.
    std::unique_ptr<Picture> begin(int32_t flags = RENDERFLAGS_EXTERNAL,
                                   std::optional<headless::RenderRegion> region = std::nullopt);
    std::unique_ptr<Picture> beginOn(headless::Document& document, int32_t flags);
    /// One round of all renders, with what the library reports then.
    void round(double elapsedSeconds, double samplesPerPixel);
    /// More rounds, until it is so.
    void await(const std::function<bool()>& done);
    /// More rounds, until the image has changed that often.
    void awaitImage(const Picture& picture, uint64_t changes);
    /// More rounds, until the render has ended.
    void awaitEnd(const Picture& picture);
    /// The artist stops the render.
    void end(Picture& picture);

    GeDialog& openToneMapping();
    /// The artist opens the dialog, has the picture linear at that scale, and closes it.
    void makeLinear(float scale);

    bool isEnabled(int32_t command);
    size_t runs() const { return library()->count("ToneMapperDLLAPI.startTonemapping"); }
    /// What the status bar showed, without percentages and each change once.
    Lines statusTexts();
    std::string lastStatus() { return host().status().history().back(); }
    Lines tempFiles() const { return listFiles(folder() / "temp"); }

    capture::Control* library() const { return &**library_; }
    /// Puts the plug-in into a folder without a library.
    void removeLibrary();

private:
    std::filesystem::path plugin_;
    std::unique_ptr<capture::CapturingLibrary> library_;
};
