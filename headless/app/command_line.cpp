// SPDX-License-Identifier: MIT
#include "headless/app/command_line.h"

#include "headless/app/picture_arguments.h"

namespace headless {

namespace {

std::vector<OptionSpec> renderOptions() {
    return {
        {"--to", "FILE.qzs",
         "Write the scene there; else it goes to the quick render folder, or\nwhere the document says; "
         "folders are made"},
        {"--frame", "N", "Export this frame alone, also of a document that exports an animation"},
        {"--frames", "A-B", "Export these frames as an animation, with a render queue"},
        {"--set", "NAME=VALUE",
         "Set a render setting by name or number, such as RS_HALT_SPP=16;\ncan be given again", true},
        {"--cancel-after", "SECONDS", "Press the dialog's close button after that time"},
    };
}

constexpr std::string_view RENDER_NOTES =
    R"(Names of render settings and their values: "quenza-headless list descriptions". A flag is true or
false, a choice its number or name, a colour or vector x,y,z, a link the name of an object or
material.

Ends with 0 when the scene was written, with 1 and the reason on standard error when it or an image of
a texture was not, and with 130 after Ctrl-C, which presses the dialog's close button.)";

constexpr OptionSpec SAVE_OPTION{"--save", "FILE.json", "Where the document goes (needed)"};

std::vector<OptionSpec> bakeOptions() {
    return {
        {"--object", "NAME", "A polygon object of the document (needed)"},
        {"--material", "NAME", "A material of the plug-in that lies on it (needed)"},
        {"--to", "FILE.jpg",
         "Images are called after it: of out.jpg the albedo becomes\nout_albedo.jpg (needed)"},
        SAVE_OPTION,
        {"--width", "N", "Width of the images in pixels (1024)"},
        {"--height", "N", "Their height (1024)"},
        {"--border", "N", "Pixels by which the baked parts of an image are widened (5)"},
        {"--supersampling", "N", "More samples for each pixel (0)"},
        {"--channels", "A,B,...",
         "Of albedo, sigma, exponent, bump, displacement, emission and blend;\n"
         "without it all that are on and have a shader"},
        {"--hide-original", "",
         "Take the object itself out of the picture, as the copy stands in\nits place"},
    };
}

constexpr std::string_view CONVERT_NOTES =
    R"(As the plug-in's command "Convert Materials": texture tags get the new materials. The old ones
stay, on the layer "Old Materials".)";

constexpr std::string_view BAKE_NOTES =
    R"(As the plug-in's command "Bake Material on Object": a copy of the object gets a copy of the
material, which shows the images. The object and its material stay as they were.)";

constexpr std::string_view IMPORT_NOTES =
    R"(As the plug-in's command "Import .qzm". What can't be taken over is told on standard error. A .pqzm
is unpacked below the plug-in's folder of the user's application data; its textures stay there.)";

std::vector<OptionSpec> previewOptions() {
    return {
        {"--material", "NAME",
         "A material of the plug-in (needed); \"*\" for all, and can be given\nagain: images of several are "
         "called "
         "after them, OUT_NAME.png",
         true},
        {"--image", "OUT.png", "Where the image goes (needed); folders are made"},
        {"--size", "N", "Its width and height in pixels (256)"},
        {"--scene", "NAME", "A preview scene of the plug-in, such as \"sphere\"; else the first"},
        {"--quality", "Q", "low, medium, high, very-high or none; else the material's own"},
    };
}

constexpr std::string_view PREVIEW_NOTES =
    R"(As the material manager shows a material: on an object of one of the plug-in's preview scenes,
rendered by the renderer's library. Ends with 1 when a material has no preview.)";

std::vector<OptionSpec> realtimeOptions() {
    return {
        {"--image", "OUT.png", "Where the image goes that is shown at the end (needed)"},
        {"--seconds", "N", "How long the preview runs (needed)"},
        {"--size", "WxH", "Size of the image in pixels; else what the dialog has"},
        {"--move-camera", "x,y,z[@N]",
         "Move the document's camera there, N seconds after the start; can be\ngiven again", true},
    };
}

constexpr std::string_view REALTIME_NOTES =
    R"(The plug-in's realtime preview: its dialog is opened, started, and stopped at the end. Changes of the
camera go to the running render. The preview is a part of the plug-in that it doesn't register by
itself: --plugin names one that does.)";

constexpr std::string_view LIST_NOTES =
    R"(Of descriptions, DEFAULT is what the page's reset gives and VALUE what the node holds: a new one
what it starts with. SHOWN and ENABLED are what the plug-in says to these values. The values of a
choice stand below it.)";

constexpr std::string_view PROGRAM_NOTES =
    R"(Standard output carries the plug-in's console, standard error its message boxes, errors, and on a
terminal the progress. What the plug-in asks and no answer is given for counts as cancelled.

Environment:
  QUENZA_HEADLESS_CLOCK     As --fixed-clock
  XDG_CONFIG_HOME           Folder of the user's application data, with registry.ini (default
                            ~/.config; not on Windows)

Exit status: 0 done, 1 not done, 2 wrong usage, 130 interrupted.)";

ProgramSpec makeCommandLine() {
    const OperandSpec document{
        "DOCUMENT", "A document (.json), or a model file (glTF, FBX, OBJ, Collada, 3DS,\nPLY, STL)", {}};
    return {
        "quenza-headless",
        "Shows documents to the plug-in Quenza for Cinema 4D, without the desktop.",
        {
            {"--plugin", "FILE", "The plug-in; else the one beside this program, or in ../quenza"},
            {"--fixed-clock", "DATE",
             "Tell the plug-in \"YYYY-MM-DD hh:mm:ss\" as the time, so that two runs\ngive the same bytes"},
            {"--answer-file", "PATH", "Answer the plug-in's next file selector; can be given again", true},
            {"--answer", "yes|no", "Answer the plug-in's next question; can be given again", true},
        },
        {
            {"open", "Import or convert a document", {document}, {SAVE_OPTION}, ""},
            {"render",
             "Export a document with \"Render with Quenza\"",
             {document},
             renderOptions(),
             RENDER_NOTES},
            pictureCommandSpec(document),
            {"list",
             "Show what the plug-in registered",
             {{"WHAT",
               "plugins: everything, in its order\ndescriptions: the parameters of its types\n"
               "menus: where its commands stand, and which can be used",
               {"plugins", "descriptions", "menus"}},
              {"CLASS",
               "Only this type: its number, name or description, such as\noquenzarendersettings",
               {},
               true}},
             {{"--document", "DOCUMENT",
               "Describe the nodes of this document, not new ones; without CLASS\nonly types that it holds. "
               "Of "
               "menus: what can be used on it"}},
             LIST_NOTES},
            {"realtime",
             "Run the realtime preview of a document",
             {document},
             realtimeOptions(),
             REALTIME_NOTES},
            {"materials convert",
             "Turn the host's materials of a document into the plug-in's",
             {document},
             {{"--material", "NAME", "Only this one; can be given again", true}, SAVE_OPTION},
             CONVERT_NOTES},
            {"materials bake",
             "Bake a material on an object into images",
             {document},
             bakeOptions(),
             BAKE_NOTES},
            {"materials import",
             "Read the materials of a material file into a document",
             {{"FILE", "A material file (.qzm), or one packed with its textures (.pqzm)", {}}},
             {{"--into", "DOCUMENT", "Add them to this document; else they come in a new one"}, SAVE_OPTION},
             IMPORT_NOTES},
            {"materials preview",
             "Render previews of materials",
             {document},
             previewOptions(),
             PREVIEW_NOTES},
        },
        PROGRAM_NOTES,
    };
}

} // namespace

const ProgramSpec& commandLine() {
    static const ProgramSpec program = makeCommandLine();
    return program;
}

} // namespace headless
