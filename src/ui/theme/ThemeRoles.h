// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace quelto {

/// Font sizes by what the text is for.
///
/// Units: logical pixels.
struct FontSizeRoles {
    Q_GADGET
    QML_ANONYMOUS
    Q_PROPERTY(int pageTitle MEMBER pageTitle CONSTANT)
    Q_PROPERTY(int itemTitle MEMBER itemTitle CONSTANT)
    Q_PROPERTY(int heading MEMBER heading CONSTANT)
    Q_PROPERTY(int dialogTitle MEMBER dialogTitle CONSTANT)
    Q_PROPERTY(int body MEMBER body CONSTANT)
    Q_PROPERTY(int label MEMBER label CONSTANT)
    Q_PROPERTY(int caption MEMBER caption CONSTANT)
    Q_PROPERTY(int note MEMBER note CONSTANT)
    Q_PROPERTY(int statistic MEMBER statistic CONSTANT)
    Q_PROPERTY(int statisticLabel MEMBER statisticLabel CONSTANT)

public:
    int pageTitle = 28;
    /// The title of a page with a player.
    int itemTitle = 20;
    /// In the middle of an empty page.
    int heading = 18;
    int dialogTitle = 15;
    /// Text, buttons, rows and fields.
    int body = 13;
    /// Compact buttons, pills, menu titles and the line below a page's title.
    int label = 12;
    /// Subtitles, counts, details, tool tips and headings of groups.
    int caption = 11;
    /// Badges, and the small print of the sidebar.
    int note = 10;
    /// A computed value, and above it what it is.
    int statistic = 14;
    int statisticLabel = 9;
};

/// Corner radii by what is rounded.
///
/// Units: logical pixels.
struct RadiusRoles {
    Q_GADGET
    QML_ANONYMOUS
    Q_PROPERTY(int panel MEMBER panel CONSTANT)
    Q_PROPERTY(int card MEMBER card CONSTANT)
    Q_PROPERTY(int tile MEMBER tile CONSTANT)
    Q_PROPERTY(int control MEMBER control CONSTANT)
    Q_PROPERTY(int smallControl MEMBER smallControl CONSTANT)
    Q_PROPERTY(int badge MEMBER badge CONSTANT)

public:
    /// Dialogs, the HUD and boxes that group settings or states.
    int panel = 10;
    /// Clips, menus and notices in the sidebar.
    int card = 8;
    /// A coloured square with a symbol in it.
    int tile = 7;
    /// Buttons, fields and rows.
    int control = 6;
    /// Pills, menu entries, tool tips and buttons that have only a symbol.
    int smallControl = 5;
    /// Badges, hints over pictures and menu titles.
    int badge = 4;
};

/// Distances by what they are between.
///
/// Units: logical pixels.
struct SpacingRoles {
    Q_GADGET
    QML_ANONYMOUS
    Q_PROPERTY(int page MEMBER page CONSTANT)
    Q_PROPERTY(int dialog MEMBER dialog CONSTANT)
    Q_PROPERTY(int panel MEMBER panel CONSTANT)
    Q_PROPERTY(int card MEMBER card CONSTANT)
    Q_PROPERTY(int sidebar MEMBER sidebar CONSTANT)
    Q_PROPERTY(int control MEMBER control CONSTANT)
    Q_PROPERTY(int overlay MEMBER overlay CONSTANT)
    Q_PROPERTY(int section MEMBER section CONSTANT)
    Q_PROPERTY(int paragraph MEMBER paragraph CONSTANT)
    Q_PROPERTY(int stack MEMBER stack CONSTANT)
    Q_PROPERTY(int row MEMBER row CONSTANT)
    Q_PROPERTY(int badge MEMBER badge CONSTANT)
    Q_PROPERTY(int lines MEMBER lines CONSTANT)

public:
    /// From the edge of a page to its content.
    int page = 28;
    /// From the edge of a dialog to its content.
    int dialog = 24;
    /// From the edge of a SectionCard to its content.
    int panel = 20;
    /// From the edge of a small card to its content.
    int card = 12;
    /// From the edge of the sidebar to its rows, and from the edge of a row to its text.
    int sidebar = 10;
    /// Left and right of a control's text.
    int control = 12;
    /// From the edge of a picture to what lies over it.
    int overlay = 8;
    /// Between the rows of a SectionCard.
    int section = 18;
    /// Between a heading, its text and what follows.
    int paragraph = 14;
    /// Between the lines of a dense card or dialog, and between a dialog's buttons.
    int stack = 10;
    /// Between a symbol and its text, and between controls in a row.
    int row = 8;
    /// Between a badge's symbol and its text, and above and below them.
    int badge = 4;
    /// Between a title and the line below it.
    int lines = 3;
};

/// Durations by what moves or waits.
///
/// Units: milliseconds.
struct DurationRoles {
    Q_GADGET
    QML_ANONYMOUS
    Q_PROPERTY(int highlight MEMBER highlight CONSTANT)
    Q_PROPERTY(int toggle MEMBER toggle CONSTANT)
    Q_PROPERTY(int reveal MEMBER reveal CONSTANT)
    Q_PROPERTY(int scroll MEMBER scroll CONSTANT)
    Q_PROPERTY(int scrollBar MEMBER scrollBar CONSTANT)
    Q_PROPERTY(int hudEnter MEMBER hudEnter CONSTANT)
    Q_PROPERTY(int hudLeave MEMBER hudLeave CONSTANT)
    Q_PROPERTY(int spinnerTurn MEMBER spinnerTurn CONSTANT)
    Q_PROPERTY(int toolTipDelay MEMBER toolTipDelay CONSTANT)
    Q_PROPERTY(int ringEnter MEMBER ringEnter CONSTANT)
    Q_PROPERTY(int ringLeave MEMBER ringLeave CONSTANT)
    Q_PROPERTY(int jumpFade MEMBER jumpFade CONSTANT)
    Q_PROPERTY(int jumpSpring MEMBER jumpSpring CONSTANT)
    Q_PROPERTY(int selectionSpring MEMBER selectionSpring CONSTANT)

public:
    /// A card under the pointer, or a pill that is selected, changes colour.
    int highlight = 120;
    /// A switch moves to its other side.
    int toggle = 150;
    /// A toast or a scroll bar comes into view or leaves it.
    int reveal = 200;
    /// A view glides on after a notch of the wheel.
    int scroll = 180;
    /// A scroll bar stays visible after the last movement.
    int scrollBar = 900;
    int hudEnter = 150;
    int hudLeave = 300;
    /// One turn of a Spinner.
    int spinnerTurn = 900;
    /// The pointer rests before the tool tip opens.
    int toolTipDelay = 600;
    /// The ring around the card that a jump led to.
    int ringEnter = 150;
    int ringLeave = 600;
    /// The settings fade out before a jump.
    int jumpFade = 100;
    /// The response of the spring with which the settings come back after a jump.
    int jumpSpring = 380;
    /// The response of the spring with which the mark of the current section moves.
    int selectionSpring = 320;
};

} // namespace quelto
