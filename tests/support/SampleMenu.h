#pragma once

#include "Core/Shell/StatusItem.h"

#include <QStringList>

namespace Tavrin::Testing {

/// A menu content that tests change at will, and that counts.
class SampleMenu {
public:
    SampleMenu()
    {
        add(QStringLiteral("version"), QStringLiteral("Tavrin v1")).isEnabled = false;
        add(QStringLiteral("separator")).kind = MenuItem::Kind::separator;
        add(QStringLiteral("open"), QStringLiteral("Open...")).keyEquivalent = u'o';
        MenuItem& login = add(QStringLiteral("login"), QStringLiteral("At login"));
        login.checkState = MenuItem::CheckState::off;
        add(QStringLiteral("shortcut"), QStringLiteral("A & B_c (⌘ M)")).checkState
            = MenuItem::CheckState::on;
        add(QStringLiteral("quit"), QStringLiteral("Quit")).keyEquivalent = u'q';
    }

    MenuItem& add(const QString& identity, const QString& title = {})
    {
        MenuItem item;
        item.identity = identity;
        item.title = title;
        item.action = [this, identity] { chosen.append(identity); };
        items.push_back(item);
        return items.back();
    }

    MenuItem& at(const QString& identity)
    {
        return *std::find_if(
            items.begin(), items.end(), [&](const MenuItem& item) { return item.identity == identity; });
    }

    void remove(const QString& identity)
    {
        std::erase_if(items, [&](const MenuItem& item) { return item.identity == identity; });
    }

    std::function<StatusMenuContent()> content()
    {
        return [this] {
            ++requests;
            return items;
        };
    }

    StatusMenuContent items;
    /// Identities of the entries whose actions ran.
    QStringList chosen;
    int requests = 0;
};

} // namespace Tavrin::Testing
