#pragma once

#include "UI/Editor/KeyRecorder.h"
#include "UI/Editor/ShortcutDraft.h"
#include "UI/Picker/AppPickerModel.h"

#include <QObject>
#include <QtQmlIntegration>

namespace Tavrin {

class HotKeyManager;

/// What the editor works with; everything outlives it.
struct EditorServices {
    HotKeyManager& hotKeys;
    KeyCapture& keyCapture;
    const std::vector<ScriptPreset>& scriptPresets;
    AppScanner& applications;
    OpenPanel& openPanel;
};

/// The editor of one shortcut, without a word about how it looks: the fields, what may be chosen for them,
/// and what the buttons do. It stores nothing itself. Main thread.
class EditorModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Opened by the window's content")

    Q_PROPERTY(QString title READ title CONSTANT)
    Q_PROPERTY(QString saveTitle READ saveTitle CONSTANT)
    Q_PROPERTY(QString errorMessage READ errorMessage NOTIFY errorMessageChanged)

    Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged)
    Q_PROPERTY(Tavrin::KeyRecorder* recorder READ recorder CONSTANT)
    Q_PROPERTY(QString keyNotice READ keyNotice NOTIFY keyNoticeChanged)
    Q_PROPERTY(bool isKeyTaken READ isKeyTaken NOTIFY keyNoticeChanged)
    Q_PROPERTY(int selectedType READ selectedType WRITE setSelectedType NOTIFY selectedTypeChanged)
    Q_PROPERTY(QList<QString> typeLabels READ typeLabels CONSTANT)
    Q_PROPERTY(QList<QString> typeSymbols READ typeSymbols CONSTANT)

    Q_PROPERTY(QString actionValue READ actionValue WRITE setActionValue NOTIFY actionValueChanged)
    Q_PROPERTY(bool isApplicationChosen READ isApplicationChosen NOTIFY actionValueChanged)
    Q_PROPERTY(QString applicationName READ applicationName NOTIFY applicationChanged)
    Q_PROPERTY(QString applicationIcon READ applicationIcon NOTIFY applicationChanged)
    Q_PROPERTY(bool isPicking READ isPicking NOTIFY pickingChanged)
    Q_PROPERTY(Tavrin::AppPickerModel* picker READ picker NOTIFY pickerOpened)
    Q_PROPERTY(QList<QString> scriptPresetNames READ scriptPresetNames CONSTANT)
    Q_PROPERTY(QList<QString> scriptPresetDetails READ scriptPresetDetails CONSTANT)
    Q_PROPERTY(QList<QString> scriptPresetSymbols READ scriptPresetSymbols CONSTANT)

    Q_PROPERTY(QString quickText READ quickText WRITE setQuickText NOTIFY quickTextChanged)
    Q_PROPERTY(QList<QString> quickTextPresetNames READ quickTextPresetNames CONSTANT)
    Q_PROPERTY(QList<QString> quickTextPresetDetails READ quickTextPresetDetails CONSTANT)
    Q_PROPERTY(QList<QString> tokenTitles READ tokenTitles CONSTANT)
    Q_PROPERTY(int selectedMode READ selectedMode WRITE setSelectedMode NOTIFY selectedModeChanged)
    Q_PROPERTY(QList<QString> modeTitles READ modeTitles CONSTANT)
    Q_PROPERTY(bool pastes READ pastes NOTIFY selectedModeChanged)
    Q_PROPERTY(
        bool restoreClipboard READ restoreClipboard WRITE setRestoreClipboard NOTIFY restoreClipboardChanged)
    Q_PROPERTY(bool isPermissionMissing READ isPermissionMissing NOTIFY permissionChanged)

    Q_PROPERTY(int selectedSystemAction READ selectedSystemAction WRITE setSelectedSystemAction NOTIFY
            selectedSystemActionChanged)
    Q_PROPERTY(QList<QString> systemActionGroups READ systemActionGroups CONSTANT)
    Q_PROPERTY(QList<QString> systemActionTitles READ systemActionTitles CONSTANT)
    Q_PROPERTY(QList<QString> systemActionSymbols READ systemActionSymbols CONSTANT)

public:
    /// Without an item, the editor of a new shortcut.
    explicit EditorModel(EditorServices services, const std::optional<ShortcutItem>& item = std::nullopt,
        QObject* parent = nullptr);

    QString title() const;
    QString saveTitle() const;
    /// What the last attempt to save found missing; empty if there was none.
    QString errorMessage() const { return m_errorMessage; }

    QString name() const { return m_draft.name; }
    void setName(const QString& name);
    KeyRecorder* recorder() { return &m_recorder; }
    QString keyNotice() const { return m_draft.keyNotice(); }
    /// The notice is a warning.
    bool isKeyTaken() const { return m_draft.isKeyTaken(); }
    /// Index in typeLabels(). What the fields of other types hold stays.
    int selectedType() const { return static_cast<int>(m_draft.actionType); }
    void setSelectedType(int index);
    static QStringList typeLabels();
    static QStringList typeSymbols();

    /// Application, address or script.
    QString actionValue() const { return m_draft.actionValue; }
    void setActionValue(const QString& value);
    bool isApplicationChosen() const;
    /// Of the installed application; what is stored where there is none.
    QString applicationName() const;
    /// For an image's source; a general picture where there is no such application.
    QString applicationIcon() const;
    bool isPicking() const { return m_picker != nullptr; }
    /// The picker that is open; null while there is none. A view that is about to go is not told so.
    AppPickerModel* picker() const { return m_picker.get(); }
    QStringList scriptPresetNames() const;
    QStringList scriptPresetDetails() const;
    QStringList scriptPresetSymbols() const;

    QString quickText() const { return m_draft.quickText; }
    void setQuickText(const QString& text);
    static QStringList quickTextPresetNames();
    static QStringList quickTextPresetDetails();
    static QStringList tokenTitles();
    /// Index in modeTitles().
    int selectedMode() const { return static_cast<int>(m_draft.quickTextMode); }
    void setSelectedMode(int index);
    static QStringList modeTitles();
    bool pastes() const { return m_draft.pastes(); }
    bool restoreClipboard() const { return m_draft.restoreClipboard; }
    void setRestoreClipboard(bool restores);
    /// The chosen mode presses keys for the user, and may not.
    bool isPermissionMissing() const;

    /// Index in systemActionTitles().
    int selectedSystemAction() const { return static_cast<int>(m_draft.systemAction); }
    void setSelectedSystemAction(int index);
    /// The headings, in display order.
    static QStringList systemActionGroups();
    static QStringList systemActionTitles();
    static QStringList systemActionSymbols();
    /// Which actions stand below a heading, given by its index: a run in systemActionTitles().
    Q_INVOKABLE static int firstSystemAction(int group);
    Q_INVOKABLE static int systemActionCount(int group);

    Q_INVOKABLE void chooseApplication();
    Q_INVOKABLE void closePicker();
    /// An index that is not there does nothing.
    Q_INVOKABLE void applyScriptPreset(int index);
    Q_INVOKABLE void applyQuickTextPreset(int index);
    /// Puts the placeholder with this index in tokenTitles() at the end of the quick text.
    Q_INVOKABLE void appendToken(int index);
    Q_INVOKABLE void requestAccessibility();
    /// Hands the finished shortcut out, or says what is missing.
    Q_INVOKABLE void save();
    /// Closes the editor; one that records keys ends that first and stays.
    Q_INVOKABLE void escape();
    /// Closes the editor without saving.
    Q_INVOKABLE void dismiss();

Q_SIGNALS:
    void errorMessageChanged();
    void nameChanged();
    void keyNoticeChanged();
    void selectedTypeChanged();
    void actionValueChanged();
    void applicationChanged();
    void pickerOpened();
    void pickingChanged();
    void quickTextChanged();
    void selectedModeChanged();
    void restoreClipboardChanged();
    void permissionChanged();
    void selectedSystemActionChanged();

    /// Once, after everything was checked and before the editor closes.
    void saved(const ShortcutItem& item);
    /// The editor is to be closed.
    void dismissed();

private:
    template <typename Value>
    void change(Value& field, const Value& value, void (EditorModel::*changed)());
    template <typename Change>
    void applyPreset(Change apply);
    std::optional<InstalledApp> application() const;

    EditorServices m_services;
    ShortcutDraft m_draft;
    KeyRecorder m_recorder;
    /// What was chosen last: the scanner does not know an application that lies elsewhere.
    InstalledApp m_chosen;
    std::unique_ptr<AppPickerModel> m_picker;
    QString m_errorMessage;
};

} // namespace Tavrin
