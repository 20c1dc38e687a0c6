#pragma once

#include "Core/Applications/AppScanner.h"
#include "Core/Shell/MainWindow.h"
#include "UI/Author/AuthorModel.h"
#include "UI/Editor/EditorModel.h"
#include "UI/ShortcutListModel.h"

#include <QObject>
#include <QTimer>
#include <QtQmlIntegration>
#include <optional>

namespace Tavrin {

/// What the main window shows and what its controls do, without a word about how it looks. Main thread.
class ContentModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Built from the services")

    Q_PROPERTY(QString currentVersion READ currentVersion CONSTANT)
    Q_PROPERTY(QList<QString> tabTitles READ tabTitles CONSTANT)
    Q_PROPERTY(QList<QString> tabSymbols READ tabSymbols CONSTANT)
    Q_PROPERTY(Tab selectedTab READ selectedTab NOTIFY selectedTabChanged)
    Q_PROPERTY(bool isPaused READ isPaused NOTIFY pausedChanged)
    Q_PROPERTY(bool isAccessibilityGranted READ isAccessibilityGranted NOTIFY accessibilityChanged)
    Q_PROPERTY(bool launchAtLogin READ launchAtLogin WRITE setLaunchAtLogin NOTIFY settingsChanged)
    Q_PROPERTY(bool hideDockIcon READ hideDockIcon WRITE setHideDockIcon NOTIFY settingsChanged)
    Q_PROPERTY(bool isOnboardingShown READ isOnboardingShown NOTIFY settingsChanged)

    Q_PROPERTY(Tavrin::ShortcutListModel* shortcuts READ shortcuts CONSTANT)
    Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY filterChanged)
    Q_PROPERTY(int selectedFilter READ selectedFilter WRITE setSelectedFilter NOTIFY filterChanged)
    Q_PROPERTY(QList<QString> filterTitles READ filterTitles CONSTANT)
    Q_PROPERTY(bool isStoreEmpty READ isStoreEmpty NOTIFY storeChanged)
    Q_PROPERTY(QString emptyTitle READ emptyTitle NOTIFY storeChanged)
    Q_PROPERTY(QString emptyButton READ emptyButton NOTIFY storeChanged)
    Q_PROPERTY(QString totals READ totals NOTIFY storeChanged)
    Q_PROPERTY(bool isDeletePending READ isDeletePending NOTIFY pendingDeleteChanged)
    Q_PROPERTY(QString deleteMessage READ deleteMessage NOTIFY pendingDeleteChanged)

    Q_PROPERTY(bool isEditing READ isEditing NOTIFY editingChanged)
    Q_PROPERTY(Tavrin::EditorModel* editor READ editor NOTIFY editorOpened)

    Q_PROPERTY(bool isUpdateAvailable READ isUpdateAvailable NOTIFY updateChanged)
    Q_PROPERTY(bool isUpdating READ isUpdating NOTIFY updateChanged)
    Q_PROPERTY(QString updateTitle READ updateTitle NOTIFY updateChanged)
    Q_PROPERTY(QString updateProgress READ updateProgress NOTIFY updateChanged)
    Q_PROPERTY(QString updateStatus READ updateStatus NOTIFY updateChanged)
    Q_PROPERTY(Tavrin::AuthorModel* author READ author CONSTANT)

public:
    enum Tab { ShortcutsTab, GuideTab, AuthorTab };
    Q_ENUM(Tab)

    /// The services outlive the model.
    explicit ContentModel(const MainWindowServices& services);

    QString currentVersion() const;
    /// Of the tabs, in the order of their raw values.
    static QStringList tabTitles();
    static QStringList tabSymbols();
    Tab selectedTab() const { return m_selectedTab; }
    /// By raw value; one that no tab has changes nothing.
    Q_INVOKABLE void selectTab(int rawValue);
    /// What this window did last: it neither asks nor follows the hotkeys' own state.
    bool isPaused() const { return m_isPaused; }
    bool isAccessibilityGranted() const { return m_isAccessibilityGranted; }
    bool launchAtLogin() const;
    void setLaunchAtLogin(bool value);
    bool hideDockIcon() const;
    void setHideDockIcon(bool value);
    bool isOnboardingShown() const;

    ShortcutListModel* shortcuts() { return &m_shortcuts; }
    QString searchText() const { return m_searchText; }
    void setSearchText(const QString& text);
    /// Index in filterTitles(): 0 for all, then the action types.
    int selectedFilter() const { return m_selectedFilter; }
    void setSelectedFilter(int index);
    static QStringList filterTitles();
    bool isStoreEmpty() const;
    QString emptyTitle() const;
    QString emptyButton() const;
    QString totals() const;
    bool isDeletePending() const { return m_pendingDelete.has_value(); }
    QString deleteMessage() const;

    bool isEditing() const { return m_editor; }
    /// The editor that is open; null while there is none. A view that is about to go is not told so.
    EditorModel* editor() const { return m_editor; }

    bool isUpdateAvailable() const;
    bool isUpdating() const;
    QString updateTitle() const;
    QString updateProgress() const;
    QString updateStatus() const;

    /// Of the author page; made when it is first shown.
    AuthorModel* author();

    Q_INVOKABLE void clearFilter();
    Q_INVOKABLE void togglePaused();
    Q_INVOKABLE void requestAccessibility();
    /// Downloads and installs it; nothing if there is no address.
    Q_INVOKABLE void startUpdate();
    Q_INVOKABLE void dismissUpdate();
    Q_INVOKABLE void showOnboarding();
    Q_INVOKABLE void finishOnboarding();
    /// Looks at the permission now.
    Q_INVOKABLE void readAccessibility();
    /// Opens the desktop's page for it, whether or not the permission is there.
    Q_INVOKABLE void openAccessibilitySettings();

    /// Rows are those of shortcuts(); one that is not there does nothing.
    Q_INVOKABLE void toggle(int row);
    /// Runs the action at once, also of a shortcut that is off.
    Q_INVOKABLE void test(int row);
    Q_INVOKABLE void askToDelete(int row);
    Q_INVOKABLE void confirmDelete();
    Q_INVOKABLE void cancelDelete();

    /// Opens the editor for a new shortcut, or for that of a row. One that is open stays as it is.
    Q_INVOKABLE void showEditor();
    Q_INVOKABLE void edit(int row);

    /// Takes what the editor has finished: a new shortcut goes to the end, a known one is replaced.
    void save(const ShortcutItem& item);
    /// The first time: sees to it that the shortcuts are registered, if the launch has not done so.
    /// Looks at the permission now, and from time to time while the window is on screen; and soon, but after
    /// the first frame, for the applications that are installed.
    void setOnScreen(bool isOnScreen);
    /// The installed applications; the first use has them read.
    AppScanner& scanner();

Q_SIGNALS:
    void selectedTabChanged();
    void pausedChanged();
    void accessibilityChanged();
    void settingsChanged();
    void filterChanged();
    void storeChanged();
    void pendingDeleteChanged();
    void editorOpened();
    void editingChanged();
    void updateChanged();

private:
    void openEditor(const std::optional<ShortcutItem>& item);
    void closeEditor();
    void endRecording();
    void handleNotification(const QString& name);
    void applyFilter();
    void registerHotKeys();
    void scanApplications();

    MainWindowServices m_services;
    ShortcutListModel m_shortcuts;
    Tab m_selectedTab = ShortcutsTab;
    QString m_searchText;
    int m_selectedFilter = 0;
    std::optional<ShortcutItem> m_pendingDelete;
    EditorModel* m_editor = nullptr;
    AuthorModel* m_author = nullptr;
    bool m_isPaused = false;
    bool m_isAccessibilityGranted = false;
    QTimer m_accessibilityTimer;
    QTimer m_scanTimer;
    std::unique_ptr<AppScanner> m_scanner;
};

} // namespace Tavrin
