// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "queues/TaskQueue.h"

#include <QObject>
#include <QString>
#include <QUuid>

#include <optional>

namespace quelto {

/// Holds the enumeration for QML.
class Pages : public QObject {
    Q_OBJECT

public:
    enum class Kind { Library, Match, Review, Settings, Matches };
    Q_ENUM(Kind)
};

struct Page {
    Pages::Kind kind = Pages::Kind::Library;
    /// Of a match or a review.
    QUuid match;

    bool operator==(const Page&) const = default;
};

/// Which page the window shows, and the short text that floats over it.
///
/// Thread: main.
class Navigation : public QObject {
    Q_OBJECT
    Q_PROPERTY(quelto::Pages::Kind pageKind READ pageKind NOTIFY pageChanged)
    /// Shown when there is one; it goes by itself.
    Q_PROPERTY(QString toast READ toast NOTIFY toastChanged)

public:
    explicit Navigation(TaskQueue& main, QObject* parent = nullptr);

    const Page& page() const { return m_page; }
    Pages::Kind pageKind() const { return m_page.kind; }
    void setPage(const Page& page);
    Q_INVOKABLE void showLibrary() { setPage({}); }

    /// Empty for none.
    QString toast() const { return m_toast; }
    /// Shows the text for 2.5 seconds. The same text again, shown while it still stands, goes when the first one would
    /// have gone; another text has its whole time.
    void showToast(const QString& text);

Q_SIGNALS:
    void pageChanged();
    void toastChanged();

private:
    void setToast(const QString& text);

    TaskQueue& m_main;
    Page m_page;
    QString m_toast;
};

/// How other programs read the page: "library", "review 8F14E45F-…".
QString pageText(const Page& page);

} // namespace quelto
