#pragma once

#include "Core/Applications/ApplicationCatalog.h"
#include "Core/Shell/OpenPanel.h"

#include <functional>
#include <map>

namespace Tavrin {

/// Applications that exist in memory only. To be filled before it is used, since any thread may read it.
class FakeApplicationCatalog : public ApplicationCatalog {
public:
    QStringList folders() const override { return folderPaths; }
    QString suffix() const override { return QStringLiteral(".app"); }
    QStringList contents(const QString& folder) const override;
    /// What is not known cannot be read, but is there.
    ApplicationInformation information(const QString& path) const override;
    /// A square of one colour, which the name says if it is a colour's.
    QImage icon(const QString& name, int pixels) const override;

    /// Adds a folder's entry, and the folder if it is new.
    void add(const QString& folder, const QString& entry, const ApplicationInformation& information = {});

    QStringList folderPaths;
    std::map<QString, QStringList> entries;
    std::map<QString, ApplicationInformation> known;
    /// Called on the worker's thread before a folder is listed; empty for nothing.
    std::function<void(const QString& folder)> listing;
};

/// Answers when it is told to.
class FakeOpenPanel : public OpenPanel {
public:
    std::unique_ptr<OpenPanelRequest> chooseApplication(
        std::uintptr_t window, Completion completion) override;

    bool isOpen() const { return !m_open.expired(); }
    /// What the user chooses; nothing for a cancelled panel. False if no panel is open.
    bool answer(const std::optional<QString>& path);

    int requests = 0;

private:
    std::weak_ptr<Completion> m_open;
};

} // namespace Tavrin
