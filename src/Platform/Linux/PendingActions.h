#pragma once

#include "Core/Action/PasteCommand.h"
#include "Core/Action/Pasteboard.h"
#include "Core/Action/SystemActions.h"

namespace Tavrin {

/// Holds the place of the desktop's clipboard until its adapter is there.
class PendingPasteboard : public Pasteboard {
public:
    void read(Detail /*detail*/, ReadCompletion completion) override { completion({}); }
    void write(PasteboardContents /*contents*/, Stay /*stay*/) override { }
};

/// Says that no key can be pressed.
class PendingPasteCommand : public PasteCommand {
public:
    bool post() override { return false; }
};

/// Says that no action is known.
class PendingSystemActions : public SystemActions {
public:
    void perform(SystemActionType action, Failure failure) override
    {
        failure(QStringLiteral("Bản này chưa chạy được hành động “%1”").arg(title(action)));
    }
};

} // namespace Tavrin
