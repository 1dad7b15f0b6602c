// SPDX-License-Identifier: MIT
// A plug-in that uses each of the host's services once, and tells on the console what came of it.
#include "host/tables.h"

#include "headless_plugin/numbers.h"

#include <chrono>
#include <memory>
#include <stdexcept>
#include <thread>

#ifdef _WIN32
#define EXPORTED extern "C" __declspec(dllexport)
#else
#define EXPORTED extern "C" __attribute__((visibility("default")))
#endif

namespace {

Filename pluginFolder;

String yesNo(bool value) {
    return value ? "yes" : "no";
}

/// Shows strings that threads send.
class ShowMessage : public MessageData {
public:
    bool CoreMessage(int32_t id, const BaseContainer& message) override {
        if (id == TEST_MESSAGE && message.GetVoid(BFM_CORE_PAR1)) {
            const std::unique_ptr<String> text(static_cast<String*>(message.GetVoid(BFM_CORE_PAR2)));
            MessageDialog(*text);
        }
        return true;
    }
};

class Worker : public C4DThread {
public:
    void Main() override {
        SpecialEventAdd(TEST_MESSAGE, 1, reinterpret_cast<uintptr_t>(new String("from the worker")));
        StatusSetText("working");
        StatusSetBar(40);
        while (!TestBreak()) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        StatusClear();
        GePrint("worker ends");
    }
    const char* GetThreadName() override { return "Worker"; }
};

class Ask : public CommandData {
public:
    bool Execute(BaseDocument* /*document*/) override {
        Filename path("unchanged");
        const bool chosen = path.FileSelect(FILESELECT_LOAD, "Which file?");
        GePrint(String("file: ") + yesNo(chosen) + " " + path.GetString());
        GePrint(String("question: ") + yesNo(QuestionDialog("Really?")));
        return chosen;
    }
};

class Thrower : public C4DThread {
public:
    void Main() override { throw std::runtime_error("lost the thread"); }
    const char* GetThreadName() override { return "Thrower"; }
};

class ThrowingThread : public CommandData {
public:
    bool Execute(BaseDocument* /*document*/) override {
        Thrower thread;
        thread.Start();
        thread.End(true);
        return !thread.IsRunning();
    }
};

class Throwing : public CommandData {
public:
    bool Execute(BaseDocument* /*document*/) override { throw std::runtime_error("no idea"); }
};

class Disabled : public CommandData {
public:
    bool Execute(BaseDocument* /*document*/) override { return true; }
    int32_t GetState(BaseDocument* /*document*/) override { return 0; }
};

class Asker : public C4DThread {
public:
    explicit Asker(bool waitsForEnd) : waitsForEnd_(waitsForEnd) {}

    void Main() override {
        while (waitsForEnd_ && !TestBreak()) {
            std::this_thread::yield();
        }
        GePrint(String("thread asked: ") + yesNo(QuestionDialog("From a thread?")));
    }
    const char* GetThreadName() override { return "Asker"; }

private:
    const bool waitsForEnd_;
};

class OtherThread : public CommandData {
public:
    bool Execute(BaseDocument* /*document*/) override {
        Asker unheard(false);
        unheard.Start();
        while (unheard.IsRunning()) {
            std::this_thread::yield();
        }
        Asker heard(true);
        heard.Start();
        heard.End(true);
        return true;
    }
};

class Form : public GeDialog {
public:
    bool CreateLayout() override {
        SetTitle("Form");
        return GroupBegin(0, "Group") && AddEditText(FORM_TEXT, 100, 10) &&
               AddComboBox(FORM_CHOICE, 100, 10) && AddChild(FORM_CHOICE, 3, "three") &&
               AddButton(FORM_APPLY, 50, 10, "Apply") && AddButton(FORM_DISABLED, 50, 10, "Never") &&
               !AddCheckbox(FORM_TEXT, 10, 10, "taken") && !AddChild(FORM_TEXT, 1, "no combo box") &&
               GroupEnd();
    }
    bool InitValues() override {
        Enable(FORM_DISABLED, false);
        return SetValue(FORM_CHOICE, GeData(int32_t{3})) && !SetValue(4711, GeData());
    }
    bool Command(int32_t id, const BaseContainer& /*message*/) override {
        GeData text;
        GeData choice;
        GetValue(FORM_TEXT, text);
        GetValue(FORM_CHOICE, choice);
        GePrint(String("used ") + LongToString(id) + ": " + text.GetString() + ", " +
                LongToString(choice.GetLong()));
        return true;
    }
};

class ToggleForm : public CommandData {
public:
    bool Execute(BaseDocument* /*document*/) override {
        if (form_.IsOpen()) {
            form_.Close();
            return true;
        }
        return form_.OpenAsync(TEST_FORM, 200, 100);
    }

private:
    Form form_;
};

class LeaveThread : public CommandData {
public:
    bool Execute(BaseDocument* /*document*/) override { return worker_.Start(); }

private:
    Worker worker_;
};

class TestTag : public TagData {
public:
    bool GetDDescription(BaseList2D* node, Description* description, int32_t& flags) override {
        if (!description->LoadDescription(TEST_TAG)) {
            return false;
        }
        description->Hide(1002, !node->GetDataInstance()->GetBool(1003));
        flags |= DESCFLAGS_DESC_LOADED;
        return true;
    }
    bool GetDEnabling(BaseList2D* /*node*/, const DescID& id) override { return !(id == DescID(1001)); }
};

NodeData* makeTag() {
    return new TestTag;
}

template <typename Command>
bool registerCommand(int32_t id, const String& name) {
    PluginInfo info;
    info.id = id;
    info.name = name;
    info.help = name + " help";
    info.icon = "none.tif";
    auto command = std::make_unique<Command>();
    const bool registered = RegisterCommandPlugin(info, command.get());
    if (registered) {
        static_cast<void>(command.release());
    }
    return registered;
}

bool start() {
    PluginInfo message;
    message.id = TEST_MESSAGE;
    message.name = "Show Message";
    PluginInfo tag;
    tag.id = TEST_TAG;
    tag.name = GeLoadString(20002);
    tag.description = "TTest";
    tag.info = 0x20000001;
    const bool registered =
        RegisterMessagePlugin(message, new ShowMessage) && registerCommand<Ask>(TEST_ASK, "Ask") &&
        registerCommand<ThrowingThread>(TEST_THROWING_THREAD, "Throwing Thread") &&
        registerCommand<Throwing>(TEST_THROWING, "Throwing") &&
        registerCommand<Disabled>(TEST_DISABLED, "Disabled") &&
        registerCommand<OtherThread>(TEST_OTHER_THREAD, "Other Thread") &&
        registerCommand<ToggleForm>(TEST_FORM, "Form") &&
        registerCommand<LeaveThread>(TEST_LEFT_THREAD, "Leave") && RegisterTagPlugin(tag, makeTag);
    const bool again = registerCommand<Ask>(TEST_ASK, "Ask again") || RegisterMessagePlugin(tag, nullptr) ||
                       RegisterTagPlugin(tag, makeTag);
    GePrint(String("taken numbers refused: ") + yesNo(!again));
    return registered;
}

} // namespace

EXPORTED int32_t c4d_main(int32_t action, void* p1, void* /*p2*/, void* p3) {
    switch (action) {
    case C4DPL_INIT:
        SetHostTables(static_cast<const HostTable*>(p1));
        pluginFolder = *static_cast<const Filename*>(p3);
        GePrint(String("init in ") + pluginFolder.GetFile().GetString());
        return 1;
    case C4DPL_START:
        return start();
    case C4DPL_END:
        GePrint("end");
        GeFreeResource();
        return 1;
    case C4DPL_MESSAGE:
        GePrint(String("message ") + LongToString(reinterpret_cast<intptr_t>(p1)));
        return reinterpret_cast<intptr_t>(p1) != C4DMSG_LOAD_RESOURCES || GeLoadResource(pluginFolder) ? 1
                                                                                                       : -1;
    default:
        return -1;
    }
}
