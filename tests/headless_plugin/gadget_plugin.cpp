// SPDX-License-Identifier: MIT
// A plug-in with a dialog of all kinds of gadgets, which tells on the console what comes to it.
#include "host/tables.h"

#include "headless_plugin/numbers.h"
#include "headless_plugin/res/c4d_symbols.h"

#include <cmath>

#ifdef _WIN32
#define EXPORTED extern "C" __declspec(dllexport)
#else
#define EXPORTED extern "C" __attribute__((visibility("default")))
#endif

namespace {

Filename pluginFolder;

/// Grey, with a bitmap of two pixels at the lower right corner; each turn of its timer makes it darker.
class Area : public GeUserArea {
public:
    ~Area() override { BaseBitmap::Free(bitmap_); }
    bool Init() override {
        bitmap_ = bitmap_ ? bitmap_ : BaseBitmap::Alloc();
        bitmap_->Init(2, 1);
        bitmap_->SetPixel(0, 0, 255, 0, 0);
        bitmap_->SetPixel(1, 0, 0, 0, 255);
        SetTimer(100);
        return true;
    }
    bool GetMinSize(int32_t& width, int32_t& height) override {
        width = 30;
        height = 20;
        return true;
    }
    void Sized(int32_t width, int32_t height) override { tell("sized", width, height); }
    void DrawMsg(int32_t x1, int32_t y1, int32_t x2, int32_t y2, const BaseContainer& /*message*/) override {
        DrawSetPen(Vector(grey_, grey_, grey_));
        DrawRectangle(x1 - 1000, y1, x2 + 1000, y2);
        DrawBitmap(bitmap_, x2, y2, 0, 0, 2, 1);
        DrawBitmap(bitmap_, 0, 0, 1, 0, INT32_MAX, INT32_MAX);
        Redraw();
    }
    void Timer(const BaseContainer& /*message*/) override {
        grey_ -= 0.2f;
        Redraw();
    }
    static void tell(const String& what, int32_t a, int32_t b) {
        GePrint(what + " " + LongToString(a) + " " + LongToString(b));
    }

private:
    BaseBitmap* bitmap_ = nullptr;
    float grey_ = 1.0f;
};

String percent(float value) {
    return LongToString(static_cast<int32_t>(std::lround(value * 100.0f))) + "%";
}

class Gadgets : public GeDialog {
public:
    bool CreateLayout() override {
        return LoadDialogResource(IDD_GADGETS) && AttachUserArea(area_, IDC_AREA);
    }
    bool InitValues() override {
        return !AttachUserArea(area_, IDC_AREA) && SetValue(IDC_METHOD, GeData(int32_t{IDC_FIRST})) &&
               SetColorField(IDC_COLOUR, Vector(1.0f, 1.0f, 1.0f), 1.0f, 5.0f) &&
               !SetColorField(IDC_CHECK, Vector(), 1.0f, 5.0f) &&
               SetReal(IDC_NUMBER, 0.3f, 0.24f, 0.46f, 0.01f);
    }
    int32_t Message(const BaseContainer& message, BaseContainer& result) override {
        if (message.GetId() == BFM_CORE_MESSAGE && message.GetLong(BFM_CORE_ID) == EVMSG_CHANGE) {
            GePrint("changed");
        }
        return GeDialog::Message(message, result);
    }
    bool Command(int32_t id, const BaseContainer& message) override {
        if (id == IDC_REBUILD) {
            rebuild();
        } else if (id == IDC_COLOUR) {
            Vector colour;
            float brightness = 0.0f;
            GetColorField(IDC_COLOUR, colour, brightness);
            GePrint(String("colour ") + percent(colour.x) + ", brightness " + percent(brightness));
        } else {
            GePrint(LongToString(id) + " = " + percent(message.GetReal(id)));
        }
        return true;
    }

private:
    /// One row more each time.
    void rebuild() {
        LayoutFlushGroup(IDC_ROWS);
        ++rows_;
        for (int32_t row = 0; row < rows_; ++row) {
            GroupBegin(IDC_ROW + 100 + row, 2, String());
            AddCheckbox(IDC_ROW + row, 10, 10, "Enabled");
            AddColorField(IDC_ROW + 200 + row, 10, 10);
            GroupEnd();
        }
        GroupEnd();
        LayoutChanged(IDC_ROWS);
    }

    Area area_;
    int32_t rows_ = 0;
};

class OpenGadgets : public CommandData {
public:
    bool Execute(BaseDocument* /*document*/) override {
        EventAdd();
        EventAdd();
        return dialog_.OpenAsync(TEST_GADGETS, 300, 200);
    }
    bool RestoreLayout(void* secret) override { return dialog_.RestoreLayout(TEST_GADGETS, secret); }

private:
    Gadgets dialog_;
};

} // namespace

EXPORTED int32_t c4d_main(int32_t action, void* p1, void* /*p2*/, void* p3) {
    if (action == C4DPL_INIT) {
        SetHostTables(static_cast<const HostTable*>(p1));
        pluginFolder = *static_cast<const Filename*>(p3);
    }
    if (action == C4DPL_START) {
        PluginInfo info;
        info.id = TEST_GADGETS;
        info.name = "Gadgets";
        return RegisterCommandPlugin(info, new OpenGadgets) ? 1 : 0;
    }
    return action != C4DPL_MESSAGE || reinterpret_cast<intptr_t>(p1) != C4DMSG_LOAD_RESOURCES ||
                   GeLoadResource(pluginFolder)
               ? 1
               : -1;
}
