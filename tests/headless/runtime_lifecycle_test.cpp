// SPDX-License-Identifier: MIT
#include "headless/runtime_fixture.h"

#include "headless/model/handles.h"
#include "headless/model/node_types.h"
#include "headless/runtime/described_parameter.h"
#include "support/temp_dir.h"
#include "support/thrown_message.h"
#include "support/user_profile.h"

namespace headless {
namespace {

using Lifecycle = RuntimeTest;
using Quenza::thrownMessage;

TEST_F(Lifecycle, TellsWhatIsWrongWithAPlugin) {
    const Quenza::TempDir folder;
    const std::string text = (folder / "text.so").toStdString();
    Quenza::writeBytes(folder / "text.so", "no library");
    const std::string missing = (folder / "missing.so").toStdString();
    const std::string refusing = testPlugin("refusing").string();
    const std::string withoutEntry = testPlugin("without_entry").string();
    const std::string throwing = testPlugin("throwing").string();
    const struct {
        std::string file;
        std::string message;
    } cases[] = {
        {missing, "There is no plug-in " + missing},
        {folder.path().toStdString(), "There is no plug-in " + folder.path().toStdString()},
        {text, text + " can't be loaded: "},
        {withoutEntry, withoutEntry + " is no plug-in: it exports no c4d_main"},
        {refusing, refusing + " refused this host, whose interface version is 11000"},
        {throwing, throwing + ": action 1 ended with an exception: out of order in action 1"},
    };
    for (const auto& test : cases) {
        start();
        const std::string message = thrownMessage<HostError>([&] { host().loadPlugin(test.file); });
        EXPECT_EQ(message.substr(0, test.message.size()), test.message);
        EXPECT_EQ(thrownMessage<HostError>([&] { host().executeCommand(TEST_ASK); }),
                  "There is no command 9000003");
        stop();
    }
}

TEST_F(Lifecycle, KeepsWhatWasRegisteredBeforeAStartFailed) {
    start().loadPlugin(testPlugin("not_starting"));
    EXPECT_FALSE(host().isStarted());
    EXPECT_EQ(host().errors().lines(), Lines{testPlugin("not_starting").string() +
                                             ": its start failed after 1 registrations, which stay in use"});
    EXPECT_TRUE(host().executeCommand(9000001));
}

TEST_F(Lifecycle, LoadsStartsAndEndsInOrderAndTwice) {
    for (int i = 0; i < 2; ++i) {
        start().loadPlugin(testPlugin("working"));
        EXPECT_TRUE(host().isStarted());
        EXPECT_EQ(newLines(), (Lines{"init in test_plugins", "message 1", "taken numbers refused: yes",
                                     "message 1001188"}));
        EXPECT_EQ(thrownMessage<HostError>([] { Host second; }), "A host runs already in this process");
        EXPECT_EQ(thrownMessage<HostError>([&] { host().loadPlugin(testPlugin("working")); }),
                  "A plug-in is loaded already");
        stop();
    }
}

TEST_F(Lifecycle, TellsThePluginOfTheEndAfterItsDocumentsAreGone) {
    Lines lines;
    HostOptions options;
    options.consoleSink = [&](const std::string& line) { lines.push_back(line); };
    options.errorSink = options.statusSink = [](const std::string&) {};
    auto host = std::make_unique<Host>(options);
    host->loadPlugin(testPlugin("working"));
    auto document = std::make_unique<Document>();
    document->appendObject(createObject(Ocube)).appendTag(createTag(TEST_TAG));
    host->open(std::move(document));
    const BaseLink link(toHost(host->document()->objects().first()));
    // A message that nobody has read yet owns its text; the leak check would find it.
    host->sendCoreMessage(TEST_MESSAGE, 1, reinterpret_cast<uintptr_t>(new String("late")));
    lines.clear();
    host.reset();
    EXPECT_EQ(lines, Lines{"end"});
    EXPECT_EQ(NodeTypes::instance().find(TEST_TAG), nullptr);
    EXPECT_EQ(activeDocument(), nullptr);
}

TEST_F(Lifecycle, RunsCommandsOrTellsWhyNot) {
    startWorking();
    EXPECT_EQ(thrownMessage<HostError>([&] { host().executeCommand(TEST_DISABLED); }),
              "The command \"Disabled\" is disabled");
    EXPECT_EQ(thrownMessage<HostError>([&] { host().executeCommand(TEST_THROWING); }),
              "The command \"Throwing\" ended with an exception: no idea");
    EXPECT_EQ(thrownMessage<HostError>([&] { host().executeCommand(TEST_TAG); }),
              "There is no command 9000010 in " + testPlugin("working").string());
}

TEST_F(Lifecycle, TakesTheFixedClockFromTheEnvironment) {
    {
        const Quenza::Variable clock("QUENZA_HEADLESS_CLOCK", "2026-02-30 00:00:00");
        EXPECT_EQ(thrownMessage<HostError>([] { Host host; }),
                  "QUENZA_HEADLESS_CLOCK is \"2026-02-30 00:00:00\"; a date reads \"YYYY-MM-DD hh:mm:ss\"");
    }
    const Quenza::Variable clock("QUENZA_HEADLESS_CLOCK", "2026-02-03 04:05:06");
    start();
    DateTime now;
    GetDateTimeNow(now);
    EXPECT_EQ(now.day, 3);
    EXPECT_EQ(now.second, 6);
    EXPECT_EQ(GeGetMilliSeconds(), 1000000u);
}

} // namespace
} // namespace headless
