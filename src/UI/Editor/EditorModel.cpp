#include "UI/Editor/EditorModel.h"

#include "Core/Applications/AppScanner.h"
#include "Core/HotKey/HotKeyManager.h"
#include "UI/Picker/ApplicationIconProvider.h"

#include <algorithm>

namespace Tavrin {
namespace {

struct Token {
    QStringView title;
    QStringView text;
};

constexpr std::array tokens{
    Token{u"Ngày hiện tại", u"{date}"},
    Token{u"Giờ hiện tại", u"{time}"},
    Token{u"Ngày & Giờ", u"{datetime}"},
    Token{u"Clipboard hiện tại", u"{clipboard}"},
};

/// Labels of the types where there is no room for their titles, in the order of the types.
constexpr std::array<QStringView, allActionTypes.size()> shortLabels{
    u"Mở App", u"Trang Web", u"Văn bản", u"Script", u"Hệ thống"};

bool isIndex(int index, std::size_t count)
{
    return index >= 0 && static_cast<std::size_t>(index) < count;
}

template <typename Range, typename Text>
QStringList texts(const Range& range, Text text)
{
    QStringList result;
    for (const auto& element : range)
        result.append(std::invoke(text, element));
    return result;
}

} // namespace

EditorModel::EditorModel(EditorServices services, const std::optional<ShortcutItem>& item, QObject* parent)
    : QObject(parent)
    , m_services(services)
    , m_draft(item ? ShortcutDraft(*item) : ShortcutDraft())
    , m_recorder(m_services.keyCapture, m_draft.keyCode, m_draft.modifiers)
{
    connect(&m_recorder, &KeyRecorder::combinationChanged, this, &EditorModel::keyNoticeChanged);
    connect(this, &EditorModel::actionValueChanged, this, &EditorModel::applicationChanged);
    connect(&m_services.applications, &AppScanner::appsChanged, this, &EditorModel::applicationChanged);
    connect(this, &EditorModel::selectedModeChanged, this, &EditorModel::permissionChanged);
}

QString EditorModel::title() const
{
    return m_draft.existingItem ? QStringLiteral("Chỉnh Sửa Phím Tắt") : QStringLiteral("Thêm Phím Tắt Mới");
}

QString EditorModel::saveTitle() const
{
    return m_draft.existingItem ? QStringLiteral("Lưu Thay Đổi") : QStringLiteral("Tạo Phím Tắt");
}

template <typename Value>
void EditorModel::change(Value& field, const Value& value, void (EditorModel::*changed)())
{
    if (field == value)
        return;
    field = value;
    Q_EMIT(this->*changed)();
}

void EditorModel::setName(const QString& name)
{
    change(m_draft.name, name, &EditorModel::nameChanged);
}

void EditorModel::setSelectedType(int index)
{
    if (isIndex(index, allActionTypes.size()))
        change(m_draft.actionType, allActionTypes.at(static_cast<std::size_t>(index)),
            &EditorModel::selectedTypeChanged);
}

QStringList EditorModel::typeLabels()
{
    return texts(shortLabels, &QStringView::toString);
}

QStringList EditorModel::typeSymbols()
{
    return texts(allActionTypes, [](ActionType type) { return iconName(type); });
}

void EditorModel::setActionValue(const QString& value)
{
    change(m_draft.actionValue, value, &EditorModel::actionValueChanged);
}

bool EditorModel::isApplicationChosen() const
{
    return !m_draft.actionValue.trimmed().isEmpty();
}

std::optional<InstalledApp> EditorModel::application() const
{
    const QString value = m_draft.actionValue.trimmed();
    if (!m_chosen.path.isEmpty() && value == m_chosen.path)
        return m_chosen;
    return m_services.applications.findApp(value);
}

QString EditorModel::applicationName() const
{
    const auto app = application();
    return app ? app->name : m_draft.actionValue;
}

QString EditorModel::applicationIcon() const
{
    return applicationIconSource(application().value_or(InstalledApp()));
}

void EditorModel::chooseApplication()
{
    if (m_picker)
        return;
    m_recorder.stop();
    m_picker = std::make_unique<AppPickerModel>(
        m_services.applications, m_services.openPanel, [this](const InstalledApp& app) {
            m_chosen = app;
            setActionValue(app.path);
        });
    connect(m_picker.get(), &AppPickerModel::finished, this, &EditorModel::closePicker);
    Q_EMIT pickerOpened();
    Q_EMIT pickingChanged();
}

void EditorModel::closePicker()
{
    if (!m_picker)
        return;
    AppPickerModel* const closed = m_picker.release();
    Q_EMIT pickingChanged();
    // After the view, which goes by the same road and looks at it until then.
    closed->deleteLater();
}

QStringList EditorModel::scriptPresetNames() const
{
    return texts(m_services.scriptPresets, &ScriptPreset::name);
}

QStringList EditorModel::scriptPresetDetails() const
{
    return texts(m_services.scriptPresets, &ScriptPreset::desc);
}

QStringList EditorModel::scriptPresetSymbols() const
{
    return texts(m_services.scriptPresets, &ScriptPreset::icon);
}

void EditorModel::setQuickText(const QString& text)
{
    change(m_draft.quickText, text, &EditorModel::quickTextChanged);
}

QStringList EditorModel::quickTextPresetNames()
{
    return texts(quickTextPresets(), &QuickTextPreset::name);
}

QStringList EditorModel::quickTextPresetDetails()
{
    return texts(quickTextPresets(), &QuickTextPreset::text);
}

QStringList EditorModel::tokenTitles()
{
    return texts(tokens, [](const Token& token) { return token.title.toString(); });
}

void EditorModel::setSelectedMode(int index)
{
    if (isIndex(index, QuickTextPayload::allModes.size()))
        change(m_draft.quickTextMode, QuickTextPayload::allModes.at(static_cast<std::size_t>(index)),
            &EditorModel::selectedModeChanged);
}

QStringList EditorModel::modeTitles()
{
    return texts(QuickTextPayload::allModes, [](QuickTextPayload::Mode mode) { return Tavrin::title(mode); });
}

void EditorModel::setRestoreClipboard(bool restores)
{
    change(m_draft.restoreClipboard, restores, &EditorModel::restoreClipboardChanged);
}

bool EditorModel::isPermissionMissing() const
{
    return pastes() && !m_services.hotKeys.isAccessibilityGranted();
}

void EditorModel::setSelectedSystemAction(int index)
{
    if (isIndex(index, allSystemActionTypes.size()))
        change(m_draft.systemAction, allSystemActionTypes.at(static_cast<std::size_t>(index)),
            &EditorModel::selectedSystemActionChanged);
}

QStringList EditorModel::systemActionGroups()
{
    QStringList groups = texts(allSystemActionTypes, &groupName);
    groups.removeDuplicates();
    return groups;
}

QStringList EditorModel::systemActionTitles()
{
    return texts(allSystemActionTypes, [](SystemActionType type) { return Tavrin::title(type); });
}

QStringList EditorModel::systemActionSymbols()
{
    return texts(allSystemActionTypes, [](SystemActionType type) { return iconName(type); });
}

int EditorModel::firstSystemAction(int group)
{
    const QString heading = systemActionGroups().value(group);
    const auto first = std::ranges::find(allSystemActionTypes, heading, &groupName);
    return static_cast<int>(std::distance(allSystemActionTypes.begin(), first));
}

int EditorModel::systemActionCount(int group)
{
    const QString heading = systemActionGroups().value(group);
    return static_cast<int>(std::ranges::count(allSystemActionTypes, heading, &groupName));
}

/// What a preset replaces is compared afterwards, so that the draft alone knows what that is.
template <typename Change>
void EditorModel::applyPreset(Change apply)
{
    const ShortcutDraft before = m_draft;
    apply();
    if (m_draft.name != before.name)
        Q_EMIT nameChanged();
    if (m_draft.actionValue != before.actionValue)
        Q_EMIT actionValueChanged();
    if (m_draft.quickText != before.quickText)
        Q_EMIT quickTextChanged();
    if (m_draft.quickTextMode != before.quickTextMode)
        Q_EMIT selectedModeChanged();
}

void EditorModel::applyScriptPreset(int index)
{
    const auto& presets = m_services.scriptPresets;
    if (isIndex(index, presets.size()))
        applyPreset([&] { m_draft.applyScriptPreset(presets[static_cast<std::size_t>(index)], presets); });
}

void EditorModel::applyQuickTextPreset(int index)
{
    const auto& presets = quickTextPresets();
    if (isIndex(index, presets.size()))
        applyPreset([&] { m_draft.applyQuickTextPreset(presets[static_cast<std::size_t>(index)]); });
}

void EditorModel::appendToken(int index)
{
    if (isIndex(index, tokens.size()))
        setQuickText(m_draft.quickText + tokens.at(static_cast<std::size_t>(index)).text);
}

void EditorModel::requestAccessibility()
{
    m_services.hotKeys.requestAccessibility();
    Q_EMIT permissionChanged();
}

void EditorModel::save()
{
    m_recorder.stop();
    const ShortcutDraft::Result result = m_draft.finished([this](const QString& value) {
        const auto app = m_services.applications.findApp(value);
        return app ? std::optional(app->name) : std::nullopt;
    });
    if (const QString* missing = std::get_if<QString>(&result))
        return change(m_errorMessage, *missing, &EditorModel::errorMessageChanged);
    Q_EMIT saved(std::get<ShortcutItem>(result));
    dismiss();
}

void EditorModel::escape()
{
    m_recorder.isRecording() ? m_recorder.stop() : dismiss();
}

void EditorModel::dismiss()
{
    m_recorder.stop();
    Q_EMIT dismissed();
}

} // namespace Tavrin
