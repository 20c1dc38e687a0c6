#include "support/PasteFixture.h"

namespace Tavrin {
namespace {

using namespace Testing;

/// A page with one field; its window is named after what the field holds.
class BrowserField : public PasteTarget {
public:
    BrowserField()
        : m_page(writePage())
        , m_program(QStringLiteral("chromium"),
              {QStringLiteral("--no-sandbox"), QStringLiteral("--disable-gpu"),
                  QStringLiteral("--no-first-run"), QStringLiteral("--no-default-browser-check"),
                  QStringLiteral("--disable-background-networking"), QStringLiteral("--password-store=basic"),
                  QStringLiteral("--disable-component-update"),
                  QStringLiteral("--user-data-dir=") + m_folder.path(QStringLiteral("profile")),
                  QStringLiteral("--app=file://") + m_page})
    {
        EXPECT_TRUE(waitFor([this] { return title() == u"ready"; }, 60000)) << "the page must have the focus";
    }

    QString text() override
    {
        const QString now = title();
        return now.startsWith(u'=') ? now.sliced(1) : QString();
    }

private:
    QString writePage()
    {
        m_folder.write(QStringLiteral("page.html"),
            "<!doctype html><meta charset=utf-8><title>loading</title><input id=field>"
            "<script>const field = document.getElementById('field');"
            "field.oninput = () => document.title = '=' + field.value;"
            "const ready = () => { field.focus();"
            " if (document.hasFocus() && document.activeElement === field) document.title = 'ready';"
            " else setTimeout(ready, 20); };"
            "ready();</script>");
        return m_folder.path(QStringLiteral("page.html"));
    }

    QString title() { return m_desktop.titleOf(m_desktop.activeWindow()); }

    TemporaryFolder m_folder;
    QString m_page;
    XDesktop m_desktop;
    Program m_program;
};

class PasteIntoBrowser : public PasteTest { };

TEST_F(PasteIntoBrowser, ReachesItsFieldWhateverIsHeld)
{
    BrowserField field;
    pasteWithEverythingHeld(field);
    pasteOnEveryLayout(field);
}

} // namespace
} // namespace Tavrin
