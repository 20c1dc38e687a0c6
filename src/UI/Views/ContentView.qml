pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Window
import Tavrin

// The main window: what it always shows, one of three tabs, and what is put before them.
Rectangle {
    id: root

    required property ContentModel content

    readonly property bool isCovered: content.isDeletePending || content.isEditing || content.isOnboardingShown

    // Puts the keyboard into a tab that has come up, unless it is still choosing among the tabs.
    function enter(tab: Item): void {
        if (tab?.visible && !header.isChoosingTab)
            tab.forceActiveFocus();
    }

    color: Theme.window

    onIsCoveredChanged: {
        if (!isCovered)
            base.forceActiveFocus();
    }

    Accessible.role: Accessible.Pane
    Accessible.name: "Tavrin"

    // The window's "Close Window" command; the program decides what closing means.
    Shortcut {
        sequences: ["Ctrl+W"]
        onActivated: root.Window.window.close()
    }

    Shortcut {
        enabled: !root.isCovered
        sequences: ["Ctrl+N"]
        onActivated: root.content.showEditor()
    }

    Shortcut {
        enabled: !root.isCovered
        sequences: ["Ctrl+F", "/"]
        onActivated: {
            root.content.selectTab(0);
            shortcuts.focusSearch();
        }
    }

    FocusScope {
        id: base

        anchors.fill: parent
        enabled: !root.isCovered
        focus: true

        HeaderView {
            id: header

            anchors.left: parent.left
            anchors.right: parent.right
            content: root.content
            onAddRequested: root.content.showEditor()
        }

        Lazy {
            id: banner

            anchors.left: parent.left
            anchors.right: parent.right
            anchors.top: header.bottom
            active: root.content.isUpdateAvailable

            UpdateBanner {
                content: root.content
            }
        }

        SettingsBar {
            id: settings

            anchors.left: parent.left
            anchors.right: parent.right
            anchors.top: banner.bottom
            content: root.content
        }

        ShortcutsTab {
            id: shortcuts

            anchors.left: parent.left
            anchors.right: parent.right
            anchors.top: settings.bottom
            anchors.bottom: parent.bottom
            visible: root.content.selectedTab === ContentModel.ShortcutsTab
            focus: true
            onVisibleChanged: root.enter(this)
            content: root.content
            onAddRequested: root.content.showEditor()
            onEditRequested: row => root.content.edit(row)
        }

        Lazy {
            anchors.fill: shortcuts
            active: root.content.selectedTab === ContentModel.GuideTab
            source: "../Guide/GuideView.qml"
            content: root.content
            onItemChanged: root.enter(item)
        }

        Lazy {
            anchors.fill: shortcuts
            active: root.content.selectedTab === ContentModel.AuthorTab
            source: "../Author/AuthorTab.qml"
            content: root.content
            onItemChanged: root.enter(item)
        }
    }

    Lazy {
        id: alert

        anchors.fill: parent
        enabled: !root.content.isOnboardingShown
        active: root.content.isDeletePending
        source: "DeleteAlert.qml"
        content: root.content
    }

    Lazy {
        id: editor

        anchors.fill: parent
        enabled: !root.content.isOnboardingShown
        active: root.content.isEditing
        source: "../Editor/EditorSheet.qml"
        content: root.content
    }

    Lazy {
        anchors.fill: parent
        enabled: root.content.isOnboardingShown
        active: enabled || opacity > 0
        opacity: enabled ? 1 : 0
        onEnabledChanged: {
            // It was asked for over a sheet.
            const sheet = alert.item || editor.item;
            if (!enabled && sheet)
                sheet.forceActiveFocus();
        }
        source: "../Onboarding/OnboardingView.qml"
        content: root.content

        Behavior on opacity {
            NumberAnimation {
                duration: 250
                easing.type: Easing.InOutQuad
            }
        }
    }

    ToolTipBubble {
        anchors.fill: parent
    }
}
