#pragma once

#include <QString>
#include <array>
#include <optional>

namespace Tavrin {

/// Which kind of action a shortcut runs. The raw value (`rawValue`) is what the shortcuts file holds.
enum class ActionType { launchApp, openURL, quickText, shellScript, systemAction };

/// Every action type, in the order in which pickers list them.
inline constexpr std::array allActionTypes{
    ActionType::launchApp,
    ActionType::openURL,
    ActionType::quickText,
    ActionType::shellScript,
    ActionType::systemAction,
};

QString rawValue(ActionType type);
/// Label of the type in pickers and rows.
QString title(ActionType type);
/// Symbol name of the type; the view layer maps it to a picture.
QString iconName(ActionType type);
/// The type with exactly this raw value (case matters), or nothing.
std::optional<ActionType> actionTypeFromRawValue(const QString& rawValue);

/// The thirteen built-in system actions; declaration order is display order and decides the group.
enum class SystemActionType {
    lockScreen,
    sleepDisplay,
    sleepMac,
    toggleDarkMode,
    toggleMute,
    volumeUp,
    volumeDown,
    emptyTrash,
    toggleHiddenFiles,
    screenshotToClipboard,
    openMissionControl,
    restartFinder,
    restartDock,
};

inline constexpr std::array allSystemActionTypes{
    SystemActionType::lockScreen,
    SystemActionType::sleepDisplay,
    SystemActionType::sleepMac,
    SystemActionType::toggleDarkMode,
    SystemActionType::toggleMute,
    SystemActionType::volumeUp,
    SystemActionType::volumeDown,
    SystemActionType::emptyTrash,
    SystemActionType::toggleHiddenFiles,
    SystemActionType::screenshotToClipboard,
    SystemActionType::openMissionControl,
    SystemActionType::restartFinder,
    SystemActionType::restartDock,
};

QString rawValue(SystemActionType type);
QString title(SystemActionType type);
QString iconName(SystemActionType type);
/// Heading of the run of cases that the action belongs to.
QString groupName(SystemActionType type);
/// The action with exactly this raw value (case matters), or nothing.
std::optional<SystemActionType> systemActionTypeFromRawValue(const QString& rawValue);

} // namespace Tavrin
