#pragma once

#include "support/Program.h"
#include "support/TemporaryFolder.h"
#include "support/Wait.h"
#include "support/XDesktop.h"

#include <QFile>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <gtest/gtest.h>

namespace Tavrin::Testing {

/// A program that has the focus and takes text.
class PasteTarget {
public:
    virtual ~PasteTarget() = default;
    /// All that it has been given.
    virtual QString text() = 0;
};

/// The windows of another program that is started while this object lives, and has ended when it goes.
class WindowsOf {
public:
    explicit WindowsOf(QString className)
        : m_className(std::move(className))
    {
    }
    ~WindowsOf()
    {
        // The next program of this class must not find the old window in its place.
        EXPECT_TRUE(waitFor([this] { return m_desktop.windows(m_className).empty(); }));
    }
    WindowsOf(const WindowsOf&) = delete;
    WindowsOf& operator=(const WindowsOf&) = delete;

    void waitUntilActive()
    {
        const auto isActive = [this] {
            const auto windows = m_desktop.windows(m_className);
            return !windows.empty() && m_desktop.activeWindow() == windows.front();
        };
        EXPECT_TRUE(waitFor(isActive, 30000)) << qPrintable(m_className);
    }

private:
    QString m_className;
    XDesktop m_desktop;
};

/// A field of this very process, below a menu bar that Alt would open.
class QtField : public PasteTarget {
public:
    QtField()
    {
        m_window.menuBar()->addMenu(QStringLiteral("&File"))->addAction(QStringLiteral("&Open"));
        m_window.setCentralWidget(&m_edit);
        m_window.show();
        m_window.activateWindow();
        m_edit.setFocus();
        EXPECT_TRUE(waitFor([this] { return m_edit.hasFocus() && m_window.isActiveWindow(); }));
    }
    ~QtField() override { m_window.takeCentralWidget(); }
    QString text() override { return m_edit.text(); }

private:
    QLineEdit m_edit;
    QMainWindow m_window;
};

class GtkField : public PasteTarget {
public:
    GtkField()
        : m_windows(QStringLiteral("Gtk_field.py"))
        , m_program(QStringLiteral("/usr/bin/python3"),
              {QStringLiteral("-B"), QStringLiteral(TAVRIN_TEST_SUPPORT "/gtk_field.py")})
    {
        m_windows.waitUntilActive();
    }
    QString text() override
    {
        const QStringList lines = m_program.lines();
        return lines.isEmpty() ? QString() : lines.last();
    }

private:
    WindowsOf m_windows;
    Program m_program;
};

/// A terminal; what runs in it writes each byte to a file, as it comes.
class Terminal : public PasteTarget {
public:
    /// `arguments` end with the option behind which the command stands.
    Terminal(const QString& program, const QStringList& arguments, const QString& className)
        : m_file(m_folder.path(QStringLiteral("received")))
        , m_windows(className)
        , m_program(program,
              arguments
                  + QStringList{QStringLiteral("sh"), QStringLiteral("-c"),
                      QStringLiteral("stty raw -echo; exec cat > '%1'").arg(m_file)})
    {
        m_windows.waitUntilActive();
        EXPECT_TRUE(waitFor([this] { return QFile::exists(m_file); }));
    }
    QString text() override
    {
        QFile file(m_file);
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }

private:
    TemporaryFolder m_folder;
    QString m_file;
    WindowsOf m_windows;
    Program m_program;
};

} // namespace Tavrin::Testing
