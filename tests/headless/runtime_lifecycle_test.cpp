// SPDX-License-Identifier: MIT
#include "headless/runtime_fixture.h"

#include "headless/model/handles.h"
#include "headless/model/node_types.h"
#include "headless/runtime/described_parameter.h"
#include "support/temp_dir.h"
#include "support/thrown_message.h"

#include <cstdlib>

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
        EXPECT_EQ(thrownMessage<HostError>([&] { host().executeCommand(TEST_WORK); }),
                  "There is no command 9000002");
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

TEST_F(Lifecycle, KeepsRegistrationsInOrder) {
    startWorking();
    std::string rows;
    for (const auto& registration : host().registrations().all()) {
        rows += std::string(kindName(registration->kind)) + " " + std::to_string(registration->info.id) +
                " " + registration->info.name.GetUtf8() + "\n";
    }
    EXPECT_EQ(rows, "message 9000001 Show Message\n"
                    "command 9000002 Work\n"
                    "command 9000003 Ask\n"
                    "command 9000004 Throwing Thread\n"
                    "command 9000011 Throwing\n"
                    "command 9000005 Disabled\n"
                    "command 9000006 Unwilling\n"
                    "command 9000007 Other Thread\n"
                    "command 9000008 Form\n"
                    "command 9000009 Leave\n"
                    "tag 9000010 Test Tag\n");
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

TEST_F(Lifecycle, DescribesANodeAsThePluginWantsIt) {
    startWorking();
    const std::unique_ptr<Tag> tag = createTag(TEST_TAG);
    ASSERT_NE(tag, nullptr);
    const auto row = [&](size_t index) {
        const DescribedParameter parameter = describe(toHost(tag.get())).at(index);
        return parameter.entry->symbol + (parameter.hidden ? " hidden" : "") +
               (parameter.enabled ? "" : " disabled");
    };
    const auto first = describe(toHost(tag.get()));
    const auto amount = std::ranges::find(first, 1001, &DescribedParameter::id);
    ASSERT_NE(amount, first.end());
    const auto at = static_cast<size_t>(amount - first.begin());
    EXPECT_EQ(amount->properties.GetString(DESC_NAME), String("Amount"));
    EXPECT_EQ(amount->properties.GetReal(DESC_MAX), 2.0f);
    EXPECT_EQ(amount->properties.GetReal(DESC_DEFAULT), 0.5f);
    EXPECT_EQ(row(at), "TEST_AMOUNT disabled");
    EXPECT_EQ(row(at + 1), "TEST_SECRET hidden");
    tag->data.SetBool(1003, true);
    EXPECT_EQ(row(at + 1), "TEST_SECRET");
    EXPECT_EQ(first.at(at + 3).properties.GetContainer(DESC_CYCLE).GetString(1), String("Second"));

    const std::unique_ptr<Object> cube = createObject(Ocube);
    EXPECT_TRUE(describe(toHost(cube.get())).empty());
}

TEST_F(Lifecycle, TakesTheFixedClockFromTheEnvironment) {
    setenv("QUENZA_HEADLESS_CLOCK", "2026-02-30 00:00:00", 1);
    EXPECT_EQ(thrownMessage<HostError>([] { Host host; }),
              "QUENZA_HEADLESS_CLOCK is \"2026-02-30 00:00:00\"; a date reads \"YYYY-MM-DD hh:mm:ss\"");
    setenv("QUENZA_HEADLESS_CLOCK", "2026-02-03 04:05:06", 1);
    start();
    unsetenv("QUENZA_HEADLESS_CLOCK");
    DateTime now;
    GetDateTimeNow(now);
    EXPECT_EQ(now.day, 3);
    EXPECT_EQ(now.second, 6);
    EXPECT_EQ(GeGetMilliSeconds(), 1000000u);
}

} // namespace
} // namespace headless
