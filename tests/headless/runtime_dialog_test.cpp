// SPDX-License-Identifier: MIT
#include "headless/runtime_fixture.h"

namespace headless {
namespace {

using namespace std::chrono_literals;
using Dialog = RuntimeTest;

UserAction press(int32_t gadget, std::chrono::milliseconds after = 0ms) {
    return {after, UserAction::Kind::press, gadget, GeData()};
}

TEST_F(Dialog, HoldsGadgetsThatAUserFillsAndPresses) {
    startWorking();
    host().user().addDialogActions({{0ms, UserAction::Kind::set, FORM_TEXT, GeData("hello")},
                                    press(FORM_APPLY, 1ms),
                                    press(FORM_DISABLED, 2ms),
                                    press(4711, 3ms)});
    ASSERT_TRUE(host().executeCommand(TEST_FORM));
    ASSERT_EQ(host().dialogs().openDialogs().size(), 1u);
    GeDialog* const form = host().dialogs().openDialogs()[0];
    EXPECT_TRUE(host().runUntil([&] { return host().errors().lines().size() == 2; }, 5s));
    EXPECT_EQ(newLines(), (Lines{"used 1001: hello, 3", "used 1003: hello, 3"}));
    EXPECT_EQ(host().errors().lines(), (Lines{"The dialog \"Form\" has no gadget 1004 that can be used",
                                              "The dialog \"Form\" has no gadget 4711 that can be used"}));
    const DialogState& state = *host().dialogs().state(form);
    EXPECT_EQ(state.title, String("Form"));
    EXPECT_EQ(state.gadgets.size(), 6u);
    EXPECT_EQ(state.find(FORM_CHOICE)->choices.at(0).second, String("three"));

    EXPECT_TRUE(host().executeCommand(TEST_FORM)) << "closes it";
    EXPECT_TRUE(host().dialogs().openDialogs().empty());
    EXPECT_TRUE(host().executeCommand(TEST_FORM)) << "opens with a new layout";
    EXPECT_EQ(state.find(FORM_TEXT)->value.GetString(), String());
    EXPECT_TRUE(host().dialogs().requestClose(form));
}

TEST_F(Dialog, AnswersComeFromTheScriptAndElseCancel) {
    startWorking();
    EXPECT_FALSE(host().executeCommand(TEST_ASK));
    EXPECT_EQ(newLines(), (Lines{"file: no unchanged", "question: no"}));
    host().user().addFileAnswer("/some/where");
    host().user().addAnswer(true);
    EXPECT_TRUE(host().executeCommand(TEST_ASK));
    EXPECT_EQ(newLines(), (Lines{"file: yes /some/where", "question: yes"}));
    EXPECT_EQ(host().errors().lines(),
              (Lines{"[file selection] Which file? (cancelled)", "[question] Really? (cancelled)",
                     "[file selection] Which file? /some/where", "[question] Really? yes"}));
}

} // namespace
} // namespace headless
