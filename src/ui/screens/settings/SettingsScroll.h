// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/tasks/TaskQueue.h"
#include "ui/screens/settings/SettingsSection.h"

#include <QMap>
#include <QObject>
#include <QVariantList>

namespace quelto {

/// From the top of the view to the tops of cards. Units: logical pixels.
using SectionOffsets = QMap<SettingsSection, double>;

/// The section that is lit while the cards are there: the last one whose card has reached the top of the view.
SettingsSection sectionAt(const SectionOffsets& offsets);

/// The state of the scrolling settings page: the section that is lit in its sidebar, the card with the highlight ring,
/// and the steps of a jump to a section. The page draws and animates; this class knows what and when.
///
/// Thread: main.
class SettingsScroll : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(quelto::SettingsSections::SettingsSection activeSection READ activeSection NOTIFY activeSectionChanged)
    /// The SettingsSection with the ring; -1 for none.
    Q_PROPERTY(int highlight READ highlight NOTIFY highlightChanged)

public:
    struct Dependencies {
        TaskQueue& main;
        std::function<HostTime()> now;
    };

    /// As SettingsPageForQml says.
    explicit SettingsScroll(QObject* parent = nullptr);
    explicit SettingsScroll(Dependencies dependencies, QObject* parent = nullptr);

    SettingsSection activeSection() const noexcept { return m_activeSection; }
    int highlight() const noexcept { return m_highlight; }

    /// Call when the cards have moved. During a jump this does nothing.
    void report(const SectionOffsets& offsets);
    /// The offsets of the first cards, in their order.
    Q_INVOKABLE void report(const QVariantList& offsets);
    /// Jumps to the section. The section that is lit is only highlighted, unless a jump to it has just begun.
    Q_INVOKABLE void select(quelto::SettingsSections::SettingsSection section);

Q_SIGNALS:
    void activeSectionChanged();
    void highlightChanged();
    /// A jump begins: fade the cards out.
    void fadeOutRequested();
    /// Scroll to the section at once, then fade the cards in.
    void jumpRequested(quelto::SettingsSections::SettingsSection section);

private:
    static constexpr int NoSection = -1;

    void activate(SettingsSection section);
    void finishJump(SettingsSection section);
    void flash(SettingsSection section);
    void setHighlight(int section);
    /// Runs the task on the main queue unless this object is gone by then.
    void runAfter(HostDuration delay, Task task);

    Dependencies m_dependencies;
    SettingsSection m_activeSection = SettingsSection::Appearance;
    int m_highlight = NoSection;
    /// Until this time the position of the cards does not change the section.
    HostTime m_jumpLock = HostTime::min();
    bool m_isFadedOut = false;
};

} // namespace quelto
