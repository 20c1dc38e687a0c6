#pragma once

#include "Platform/Linux/SystemActions/SystemActionTable.h"
#include "support/SystemActionProofs.h"

#include <QStringList>
#include <map>

namespace Tavrin::Testing {

/// docs/system-actions.md, as the table and the proofs have it.
class SystemActionsDocument {
public:
    QString text() const
    {
        QString result = introduction() + overview();
        for (const SystemActionType action : allSystemActionTypes)
            result += section(action);
        return result;
    }

    /// A short name of the desktop for documents.
    static QString name(Desktop desktop)
    {
        static const std::map<Desktop, const char*> names{{Desktop::gnome, "GNOME"},
            {Desktop::plasma, "KDE Plasma"}, {Desktop::xfce, "Xfce"}, {Desktop::mate, "MATE"},
            {Desktop::cinnamon, "Cinnamon"}, {Desktop::sway, "sway"}, {Desktop::other, "others"}};
        return QString::fromLatin1(names.at(desktop));
    }

private:
    static QString introduction()
    {
        return QStringLiteral(R"(# System actions

What each system action does on each desktop. This text is written from the table that the program uses
(`src/Platform/Linux/SystemActions/SystemActionTable.cpp`) and from the list of proofs
(`tests/support/SystemActionProofs.h`); a test fails when it differs, and
`TAVRIN_WRITE_DOCUMENTS=1 ctest --test-dir build -R unit.SystemActionTable` writes it anew.

The desktop is the one that answers when the key is pressed: the names that its programs own on the session bus,
or sway's socket. `XDG_CURRENT_DESKTOP` decides only where more than one answers. A window manager alone, and
every desktop that is not named here, is among the others. Of the means for an action, the first is used whose
needs are all there; where none is, the action fails and says what was missing. Nothing is looked at before the
first press, and nothing is remembered: what is installed today serves today.

`lockScreen` locks the session and then does what `sleepDisplay` does.

The last column names the tests. Those of `desktops` need a whole desktop and run by `./dev test desktops`, with
their last results in [desktops.md](desktops.md); all others run by `./dev test`.

## Which means are tried, in order

)");
    }

    static QString overview()
    {
        QStringList heads{QStringLiteral("action")};
        for (const Desktop desktop : allDesktops)
            heads.append(name(desktop));
        QString result = row(heads) + row(QStringList(heads.size(), QStringLiteral("---")));
        for (const SystemActionType action : allSystemActionTypes) {
            QStringList cells{code(rawValue(action))};
            for (const Desktop desktop : allDesktops)
                cells.append(namesOf(action, desktop).join(u", "));
            result += row(cells);
        }
        return result;
    }

    static QStringList namesOf(SystemActionType action, Desktop desktop)
    {
        QStringList names;
        for (const Means& means : systemActionTable()) {
            const QString meansName = QString::fromLatin1(means.name);
            if (means.action == action && means.desktops.testFlag(desktop) && !names.contains(meansName))
                names.append(meansName);
        }
        return names;
    }

    static QString section(SystemActionType action)
    {
        QString result = QStringLiteral("\n## %1: %2\n\n").arg(rawValue(action), title(action));
        const QStringList heads{QStringLiteral("means"), QStringLiteral("on"), QStringLiteral("needs"),
            QStringLiteral("does"), QStringLiteral("proven with")};
        result += row(heads) + row(QStringList(heads.size(), QStringLiteral("---")));
        for (const Means& means : systemActionTable()) {
            if (means.action == action)
                result += row({QString::fromLatin1(means.name), desktops(means.desktops), needs(means),
                    QString::fromUtf8(means.effect), proofs(means)});
        }
        return result;
    }

    static QString desktops(Desktops flags)
    {
        QStringList names;
        for (const Desktop desktop : allDesktops) {
            if (flags.testFlag(desktop))
                names.append(name(desktop));
        }
        return names.size() == qsizetype(allDesktops.size()) ? QStringLiteral("all") : names.join(u", ");
    }

    static QString needs(const Means& means)
    {
        QStringList texts;
        for (const Need& need : means.needs) {
            if (need.kind != Need::Kind::nothing)
                texts.append(code(QString::fromUtf8(describe(need))));
        }
        return texts.isEmpty() ? QStringLiteral("nothing") : texts.join(u", ");
    }

    static QString proofs(const Means& means)
    {
        QStringList texts;
        bool isReal = false;
        for (const SystemActionProof& proof : systemActionProofs) {
            if (proof.action != means.action || qstrcmp(proof.means, means.name) != 0)
                continue;
            isReal |= proof.kind == SystemActionProof::Kind::realProgram;
            texts.append(kind(proof.kind) + u" (" + QString::fromLatin1(proof.test) + u')');
        }
        if (!isReal)
            texts.append(QStringLiteral("not with the real program"));
        return texts.join(u"; ");
    }

    static QString kind(SystemActionProof::Kind kind)
    {
        switch (kind) {
        case SystemActionProof::Kind::realProgram:
            return QStringLiteral("real program");
        case SystemActionProof::Kind::mockService:
            return QStringLiteral("mock service");
        case SystemActionProof::Kind::standIn:
            return QStringLiteral("recording stand-in");
        }
        return {};
    }

    static QString code(const QString& text) { return u'`' + text + u'`'; }
    static QString row(const QStringList& cells) { return u"| " + cells.join(u" | ") + u" |\n"; }
};

} // namespace Tavrin::Testing
