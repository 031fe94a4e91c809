// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/settings/SettingsScroll.h"

#include "ui/screens/settings/SettingsPageForQml.h"

#include <QPointer>

namespace quelto {

namespace {

/// A card above this offset has reached the top of the view. Units: logical pixels.
constexpr double TopZone = 60;
constexpr std::chrono::milliseconds JumpLockDuration{600};
/// Slightly longer than the cards need to fade out.
constexpr std::chrono::milliseconds FadeOutDuration{110};
constexpr std::chrono::milliseconds HighlightDuration{700};

} // namespace

SettingsSection sectionAt(const SectionOffsets& offsets)
{
    auto section = SettingsSection::Appearance;
    for (const auto each : AllSettingsSections) {
        const auto offset = offsets.constFind(each);
        if (offset != offsets.cend() && *offset <= TopZone) {
            section = each;
        }
    }
    return section;
}

SettingsScroll::SettingsScroll(QObject* parent)
    : SettingsScroll(SettingsPageForQml::instance.value().scroll, parent)
{
}

SettingsScroll::SettingsScroll(Dependencies dependencies, QObject* parent)
    : QObject(parent)
    , m_dependencies(std::move(dependencies))
{
}

void SettingsScroll::report(const SectionOffsets& offsets)
{
    if (m_dependencies.now() > m_jumpLock) {
        activate(sectionAt(offsets));
    }
}

void SettingsScroll::report(const QVariantList& offsets)
{
    SectionOffsets known;
    for (std::size_t i = 0; i < AllSettingsSections.size() && i < static_cast<std::size_t>(offsets.size()); ++i) {
        known.insert(AllSettingsSections.at(i), offsets.at(static_cast<qsizetype>(i)).toDouble());
    }
    report(known);
}

void SettingsScroll::select(SettingsSection section)
{
    if (section == m_activeSection) {
        if (!m_isFadedOut) {
            flash(section);
        }
        return;
    }
    m_jumpLock = m_dependencies.now() + JumpLockDuration;
    activate(section);
    m_isFadedOut = true;
    Q_EMIT fadeOutRequested();
    runAfter(FadeOutDuration, [this, section] { finishJump(section); });
}

void SettingsScroll::finishJump(SettingsSection section)
{
    m_isFadedOut = false;
    Q_EMIT jumpRequested(section);
    flash(section);
}

void SettingsScroll::flash(SettingsSection section)
{
    const auto place = static_cast<int>(section);
    setHighlight(place);
    runAfter(HighlightDuration, [this, place] {
        if (m_highlight == place) {
            setHighlight(NoSection);
        }
    });
}

void SettingsScroll::activate(SettingsSection section)
{
    if (m_activeSection != section) {
        m_activeSection = section;
        Q_EMIT activeSectionChanged();
    }
}

void SettingsScroll::setHighlight(int section)
{
    if (m_highlight != section) {
        m_highlight = section;
        Q_EMIT highlightChanged();
    }
}

void SettingsScroll::runAfter(HostDuration delay, Task task)
{
    m_dependencies.main.postAfter(delay, [self = QPointer(this), task = std::move(task)] {
        if (!self.isNull()) {
            task();
        }
    });
}

} // namespace quelto
