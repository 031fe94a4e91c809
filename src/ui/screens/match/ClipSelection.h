// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSet>
#include <QString>
#include <QStringList>

namespace quelto {

/// Which clips of a page are selected.
class ClipSelection {
public:
    /// Sets the clips of the page. A clip that is gone is no longer selected, also if it comes back.
    void setClips(const QStringList& paths);
    /// A clip keeps its selection under its new name.
    void rename(const QString& from, const QString& to);

    bool contains(const QString& path) const { return m_selected.contains(path); }
    qsizetype count() const { return m_selected.size(); }
    /// True also without clips.
    bool isAll() const { return m_selected.size() == m_clips.size(); }
    /// The selected clips in the order of the page.
    QStringList selected() const;

    void toggle(const QString& path);
    /// Selects all clips, or none if all are selected.
    void toggleAll();
    void selectAll();
    void clear() { m_selected.clear(); }

private:
    QStringList m_clips;
    QSet<QString> m_selected;
};

} // namespace quelto
