#pragma once

#include "Platform/Linux/X11/X11Pasteboard.h"
#include "support/SelectionPeer.h"
#include "support/Wait.h"

#include <QElapsedTimer>
#include <gmock/gmock.h>

#include <optional>

namespace Tavrin::Testing {

/// The pasteboard, and another program that the test drives by hand.
class PasteboardFixture : public testing::Test {
protected:
    using Detail = Pasteboard::Detail;
    using Stay = Pasteboard::Stay;

    /// Runs the event loop and the other program; counts the turns of the event loop.
    bool waitPumping(const std::function<bool()>& condition, int milliseconds = 10000)
    {
        return waitFor(
            [&] {
                ++turns;
                peer.pump();
                return condition();
            },
            milliseconds);
    }

    PasteboardContents read(Detail detail)
    {
        std::optional<PasteboardContents> result;
        QElapsedTimer timer;
        timer.start();
        turns = 0;
        pasteboard->read(detail, [&](PasteboardContents contents) { result = std::move(contents); });
        EXPECT_FALSE(result) << "the completion comes later";
        EXPECT_TRUE(waitPumping([&] { return result.has_value(); }));
        duration = timer.elapsed();
        return result.value_or(PasteboardContents());
    }

    /// What the other program is told when it asks for one target of ours.
    std::optional<SelectionPeer::Value> answer(const QByteArray& selection, const QByteArray& target)
    {
        const std::size_t before = peer.received.size();
        peer.ask(selection, target);
        EXPECT_TRUE(waitPumping([&] { return peer.received.size() > before; })) << target.constData();
        if (peer.received.size() <= before || peer.received.back().second == XCB_ATOM_NONE)
            return std::nullopt;
        return peer.value(target);
    }

    SelectionPeer peer;
    std::unique_ptr<X11Pasteboard> pasteboard = std::make_unique<X11Pasteboard>();
    /// Turns of the event loop since the last reading began: hundreds, or two where something blocked it.
    /// Not the length of a turn: a machine under load makes one as long as any limit.
    int turns = 0;
    /// Of the last reading; milliseconds.
    qint64 duration = 0;
};

} // namespace Tavrin::Testing
