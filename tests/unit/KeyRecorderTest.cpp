#include "UI/Editor/KeyRecorder.h"

#include "Core/Model/KeyCodeHelper.h"
#include "Platform/Fake/FakePlatform.h"

#include <gtest/gtest.h>
#include <memory>

namespace Tavrin {
namespace {

constexpr std::uint32_t kKey = 40, aKey = 0, escapeKey = 53;
constexpr std::uint32_t capsLock = 0x400;

class Recorder : public testing::Test {
protected:
    void SetUp() override
    {
        QObject::connect(&*recorder, &KeyRecorder::combinationChanged, [this] { ++combinationChanges; });
        QObject::connect(&*recorder, &KeyRecorder::recordingChanged, [this] { ++recordingChanges; });
    }

    FakeKeyCapture capture;
    std::uint32_t keyCode = 0;
    std::uint32_t modifiers = 0;
    std::unique_ptr<KeyRecorder> recorder = std::make_unique<KeyRecorder>(capture, keyCode, modifiers);
    int combinationChanges = 0;
    int recordingChanges = 0;
};

struct PressCase {
    const char* what;
    std::uint32_t keyCode, modifiers;
    std::uint32_t storedKeyCode, storedModifiers;
    QStringList badges;
    const char* keyBadge;
};

class Press : public Recorder, public testing::WithParamInterface<PressCase> { };

TEST_P(Press, BecomesTheCombinationAndEndsTheRecording)
{
    const PressCase& press = GetParam();
    SCOPED_TRACE(press.what);
    recorder->start();
    EXPECT_TRUE(recorder->isRecording());
    EXPECT_TRUE(capture.isCapturing());
    capture.press(press.keyCode, press.modifiers);
    EXPECT_FALSE(recorder->isRecording());
    EXPECT_FALSE(capture.isCapturing());
    EXPECT_EQ(keyCode, press.storedKeyCode);
    EXPECT_EQ(modifiers, press.storedModifiers);
    EXPECT_EQ(recorder->modifierBadges(), press.badges);
    EXPECT_EQ(recorder->keyBadge(), QString::fromUtf8(press.keyBadge));
    EXPECT_EQ(recorder->isAssigned(), press.storedKeyCode != 0 || press.storedModifiers != 0);
}

INSTANTIATE_TEST_SUITE_P(Table, Press,
    testing::Values(PressCase{"two modifiers", kKey, cmdKey | shiftKey, kKey, 0x300,
                        {QStringLiteral("⇧ Shift"), QStringLiteral("⌘ Command")}, "K"},
        PressCase{"all modifiers", kKey, 0x1B00, kKey, 0x1B00,
            {QStringLiteral("⌃ Control"), QStringLiteral("⌥ Option"), QStringLiteral("⇧ Shift"),
                QStringLiteral("⌘ Command")},
            "K"},
        PressCase{"with Caps Lock", kKey, cmdKey | capsLock, kKey, 0x100, {QStringLiteral("⌘ Command")}, "K"},
        PressCase{"A alone", aKey, 0, 0, 0, {}, ""},
        PressCase{"A alone with Caps Lock", aKey, capsLock, 0, 0, {}, ""},
        PressCase{"A with a modifier", aKey, optionKey, 0, 0x800, {QStringLiteral("⌥ Option")}, ""},
        PressCase{"F5", 96, 0, 96, 0, {}, "F5"}, PressCase{"Return", 36, 0, 36, 0, {}, "⏎"},
        PressCase{"Tab", 48, 0, 48, 0, {}, "⇥"}, PressCase{"Delete", 51, 0, 51, 0, {}, "⌫"},
        PressCase{"Space", 49, 0, 49, 0, {}, "Space"},
        PressCase{"without a position", 0x10000 + 94, cmdKey, 0x10000 + 94, 0x100,
            {QStringLiteral("⌘ Command")}, "Key(65630)"}));

TEST_F(Recorder, IsCancelledByEscapeWhateverIsHeld)
{
    keyCode = kKey;
    for (const std::uint32_t held : {0U, 0x1B00U}) {
        recorder->start();
        capture.press(escapeKey, held);
        EXPECT_FALSE(recorder->isRecording());
        EXPECT_FALSE(capture.isCapturing());
        EXPECT_EQ(keyCode, kKey);
        EXPECT_EQ(modifiers, 0U);
    }
    EXPECT_EQ(combinationChanges, 0);
    EXPECT_EQ(recordingChanges, 4);
}

TEST_F(Recorder, IsStartedAndStoppedByOneButton)
{
    recorder->toggle();
    EXPECT_TRUE(capture.isCapturing());
    recorder->start();
    EXPECT_EQ(recordingChanges, 1);
    recorder->toggle();
    EXPECT_FALSE(capture.isCapturing());
    EXPECT_EQ(recordingChanges, 2);
    recorder->stop();
    EXPECT_EQ(recordingChanges, 2);
}

TEST_F(Recorder, ClearsTheCombinationAndEndsTheRecording)
{
    keyCode = kKey;
    modifiers = cmdKey;
    recorder->start();
    recorder->clear();
    EXPECT_FALSE(recorder->isRecording());
    EXPECT_FALSE(capture.isCapturing());
    EXPECT_EQ(keyCode, 0U);
    EXPECT_EQ(modifiers, 0U);
    EXPECT_FALSE(recorder->isAssigned());
    EXPECT_EQ(combinationChanges, 1);
}

TEST_F(Recorder, EndsWithTheCapture)
{
    keyCode = kKey;
    recorder->start();
    capture.lose();
    EXPECT_FALSE(recorder->isRecording());
    EXPECT_EQ(keyCode, kKey);
    recorder->start();
    EXPECT_TRUE(capture.isCapturing()) << "and can be started again";
}

TEST_F(Recorder, HearsNothingOnceItHasEnded)
{
    recorder->start();
    recorder->stop();
    capture.press(kKey, cmdKey);
    EXPECT_FALSE(recorder->isAssigned());
}

TEST_F(Recorder, GivesTheKeyboardBackWhenItGoes)
{
    recorder->start();
    recorder.reset();
    EXPECT_FALSE(capture.isCapturing());
}

} // namespace
} // namespace Tavrin
