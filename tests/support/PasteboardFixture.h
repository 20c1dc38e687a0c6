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

    /// Runs the event loop and the other program; notes for how long the event loop did not run.
    bool waitPumping(const std::function<bool()>& condition, int milliseconds = 10000)
    {
        QElapsedTimer turn;
        turn.start();
        return waitFor(
            [&] {
                longestTurn = std::max(longestTurn, turn.restart());
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
        pasteboard->read(detail, [&](PasteboardContents contents) { result = std::move(contents); });
        longestTurn = std::max(longestTurn, timer.elapsed());
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
    /// Milliseconds.
    qint64 longestTurn = 0;
    /// Of the last reading; milliseconds.
    qint64 duration = 0;
};

} // namespace Tavrin::Testing
