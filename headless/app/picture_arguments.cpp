// SPDX-License-Identifier: MIT
#include "headless/app/picture_arguments.h"

#include "headless/app/export_settings.h"
#include "headless/app/time_text.h"

#include <charconv>

namespace headless {

namespace {

constexpr std::string_view NOTES =
    R"(The image is written each time that the render shows a new one, whole or not at all. On a terminal
the keys p, r, u and q pause, resume, update the image and stop.

Actions, done by the plug-in's own commands and tone mapping dialog:
  pause, resume, update, stop
  tonemap reinhard [burn=N] [prescale=N] [postscale=N]
  tonemap linear [scale=N]
  tonemap camera [iso=N] [ev=N] [response=NAME]
  whitepoint NAME             A choice of the dialog, such as D65
  whitepoint X,Y
  layer INDEX [gain=N] [color=R,G,B] [on] [off]
                              "Layer 1" of the dialog has the index 0
They take all words up to the next option, and wait until the scene is exported. What they change is
seen in the next image. An interactive render takes none but stop. One whose time comes after the end of
the render is told on standard error, and is no failure.

Ends with 0 when the render ended as it should, also by a stop; with 1 and the reason on standard error
when it failed, gave no image, or an action could not be done, or when an image of a texture could not
be written; and with 130 after Ctrl-C, which stops the render.)";

std::optional<int32_t> readWhole(std::string_view text) {
    int32_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && stop == end && number >= 0 ? std::optional(number) : std::nullopt;
}

/// Two numbers of pixels with a sign between them.
std::optional<std::pair<int32_t, int32_t>> readTwo(std::string_view text, char between) {
    const size_t middle = text.find(between);
    if (middle == std::string_view::npos) {
        return std::nullopt;
    }
    const std::optional<int32_t> first = readWhole(text.substr(0, middle));
    const std::optional<int32_t> second = readWhole(text.substr(middle + 1));
    return first && second ? std::optional(std::pair(*first, *second)) : std::nullopt;
}

std::pair<int32_t, int32_t> parseSize(const std::string& text) {
    const auto size = readTwo(text, 'x');
    if (!size || !Image::isAllowed(size->first, size->second)) {
        throw UsageError("\"" + text + "\" is no size of an image: it reads 640x480, with sides up to " +
                         std::to_string(Image::MAX_SIDE) + " and " + std::to_string(Image::MAX_PIXELS) +
                         " pixels in all");
    }
    return *size;
}

RenderRegion parseRegion(RenderRegionKind kind, const std::string& option, const std::string& text) {
    const auto bounds = readTwo(text, '-');
    if (!bounds || bounds->first >= bounds->second) {
        throw UsageError(option + " can't be \"" + text +
                         "\": it reads 10-20, from the first to before the second");
    }
    return {kind, bounds->first, bounds->second};
}

std::optional<RenderRegion> regionOf(const Arguments& arguments) {
    const std::optional<std::string> rows = arguments.value("--rows");
    const std::optional<std::string> columns = arguments.value("--columns");
    if (rows && columns) {
        throw UsageError("--rows and --columns exclude each other");
    }
    if (rows) {
        return parseRegion(RENDERREGION_ROWS, "--rows", *rows);
    }
    return columns ? std::optional(parseRegion(RENDERREGION_COLUMNS, "--columns", *columns)) : std::nullopt;
}

int parsePort(const std::string& text) {
    const std::optional<int32_t> port = readWhole(text);
    if (!port || *port > 65535) {
        throw UsageError("--watch can't be \"" + text +
                         "\": it takes a port from 1 to 65535, or 0 for a free one");
    }
    return *port;
}

PictureOrder::TimedAction parseTimedAction(const std::string& text) {
    const size_t space = std::min(text.find(' '), text.size());
    return {parseTime(std::string_view(text).substr(0, space)),
            parsePictureAction(std::string_view(text).substr(space)), text};
}

} // namespace

CommandSpec pictureCommandSpec(const OperandSpec& document) {
    return {
        "picture",
        "Render a document in the host's Picture Viewer, into an image",
        {document},
        {
            {"--image", "OUT.png",
             "Where the image goes (needed): .png, .jpg, .tif, .bmp or .tga;\nfolders are made"},
            {"--frame", "N", "Render this frame"},
            {"--size", "WxH", "Size of the image in pixels; else that of the document"},
            {"--rows", "A-B", "Render the rows from A to before B alone"},
            {"--columns", "A-B", "Render the columns from A to before B alone"},
            {"--set", "NAME=VALUE",
             "Set a render setting by name or number, such as RS_HALT_SPP=16;\ncan be given again", true},
            {"--interactive", "", "Render as the interactive render region does"},
            {"--stop-after", "TIME", "Stop that long after the start: 20, 1.5s or 500ms"},
            {"--watch", "PORT",
             "Show the render on a web page of this machine, http://127.0.0.1:PORT/,\nwhere it can be "
             "paused, "
             "stopped and tone-mapped; 0 takes a free port"},
            {"--at", "TIME ACTION...",
             "Act on the render that long after its start: --at 2s pause;\ncan be given again", true, true},
        },
        NOTES};
}

PictureOrder readPictureOrder(const Arguments& arguments) {
    const std::optional<std::string> image = arguments.value("--image");
    if (!image) {
        throw UsageError("picture needs --image OUT.png");
    }
    PictureOrder order(*image);
    if (const std::optional<std::string> frame = arguments.value("--frame")) {
        order.frame = parseFrame(*frame);
    }
    if (const std::optional<std::string> size = arguments.value("--size")) {
        order.size = parseSize(*size);
    }
    order.settings.region = regionOf(arguments);
    order.settings.isInteractive = arguments.has("--interactive");
    if (const std::optional<std::string> time = arguments.value("--stop-after")) {
        order.stopAfter = parseTime(*time);
    }
    if (const std::optional<std::string> port = arguments.value("--watch")) {
        order.watchPort = parsePort(*port);
    }
    for (const std::string& text : arguments.values("--at")) {
        order.actions.push_back(parseTimedAction(text));
    }
    return order;
}

} // namespace headless
