// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Quelto.Controls
import Quelto.Library
import Quelto.Matches
import Quelto.MatchPage
import Quelto.Shared
import Quelto.Theme

// The page of a match: its clips, the way to their review, and the deletion of clips and of the recap.
FocusScope {
    id: view

    required property string matchId
    readonly property real topMargin: 38
    readonly property real smallestGridHeight: 200
    // In a low window, all of the page scrolls. Otherwise only the cards do.
    readonly property bool isLow: internal.isComplete && recap.count > 0 && height < head.implicitHeight + smallestGridHeight

    focus: true
    Accessible.role: Accessible.Pane
    Accessible.name: recap.isFound ? recap.name : L10n.T("Maç Özeti")
    Component.onCompleted: internal.isComplete = true
    Keys.onEscapePressed: event => {
        if (event.isAutoRepeat) {
            return;
        }
        if (recap.selectedCount > 0) {
            recap.clearSelection();
            // The button that deletes the selection may have had the focus, and is disabled now.
            grid.forceActiveFocus(Qt.OtherFocusReason);
        } else {
            Navigation.showMatches();
        }
    }

    QtObject {
        id: internal

        // All sizes are final.
        property bool isComplete: false

        // The control that had the focus may be disabled now.
        function keepFocus() {
            const next = recap.count > 0 ? grid as Item : header.backButton;
            next.forceActiveFocus(Qt.OtherFocusReason);
        }
    }

    MatchRecap {
        id: recap

        matchId: view.matchId
        width: grid.width
        viewTop: grid.viewTop
        // Intermediate sizes would create more cards than fit the view, and read their thumbnails.
        viewHeight: internal.isComplete ? grid.height : 0
        cardTextHeight: pattern.implicitHeight
    }

    // Measures the text height of a card, which the layout needs before cards exist.
    ClipCardText {
        id: pattern

        visible: false
        title: "A"
        time: "0"
    }

    EmptyState {
        anchors.centerIn: parent
        visible: recap.isMissing
        symbol: "flag.checkered"
        title: L10n.T("Bu maç özeti bulunamadı.")
    }

    Item {
        id: fixedHead

        width: view.width
        height: view.isLow ? 0 : head.implicitHeight

        ColumnLayout {
            id: head

            parent: view.isLow ? grid.headArea : fixedHead
            width: parent.width
            spacing: Theme.spacing.paragraph

            MatchHeader {
                id: header

                Layout.fillWidth: true
                Layout.topMargin: view.topMargin
                Layout.leftMargin: Theme.spacing.page
                Layout.rightMargin: Theme.spacing.page
                match: recap
                onDeleteRequested: matchDeletion.open()
            }

            ReviewCard {
                Layout.fillWidth: true
                Layout.leftMargin: Theme.spacing.page
                Layout.rightMargin: Theme.spacing.page
                visible: recap.isFound
                canReview: recap.count > 0
                onReviewRequested: Navigation.showReview(view.matchId)
            }

            SelectionBar {
                Layout.fillWidth: true
                Layout.leftMargin: Theme.spacing.page
                Layout.rightMargin: Theme.spacing.page
                visible: recap.isFound
                match: recap
                onDeleteRequested: selectionDeletion.open()
            }
        }
    }

    CardGrid {
        id: grid

        anchors.fill: parent
        anchors.topMargin: fixedHead.height
        visible: recap.count > 0
        headHeight: view.isLow ? head.implicitHeight : 0
        model: recap
        isSelectable: true
        hasSelection: recap.selectedCount > 0
        onOpenRequested: path => Navigation.openClip(path)
        onToggleRequested: path => recap.toggle(path)
        onSelectAllRequested: recap.selectAll()
        onDeleteRequested: (path, title) => clipDeletion.ask(path, title)
        onSelectionDeleteRequested: selectionDeletion.open()
    }

    DeleteClipDialog {
        id: clipDeletion

        onDeleteRequested: path => {
            recap.deleteClip(path);
            internal.keepFocus();
        }
    }

    ConfirmationDialog {
        id: selectionDeletion

        title: L10n.T("{0} klip çöp kutusuna taşınsın mı?", [recap.selectedCount])
        message: L10n.T("Klipler Çöp Kutusu'ndan geri alınabilir.")
        destructive: true
        confirmText: L10n.T("Çöp Kutusuna Taşı")
        cancelText: L10n.T("Vazgeç")
        onConfirmed: {
            recap.deleteSelected();
            internal.keepFocus();
        }
    }

    DeleteMatchDialog {
        id: matchDeletion

        onDeleteRecapRequested: recap.deleteMatch(false)
        onDeleteAllRequested: recap.deleteMatch(true)
    }
}
