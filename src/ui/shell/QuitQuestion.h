// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>

namespace quelto {

/// What the window asks and tells when the user quits while clips are exported.
///
/// Thread: main.
class QuitQuestion : public QObject {
    Q_OBJECT
    /// Whether the question is open.
    Q_PROPERTY(bool isAsked READ isAsked NOTIFY isAskedChanged)
    /// The exports that are not finished.
    Q_PROPERTY(int exportCount READ exportCount NOTIFY exportCountChanged)
    /// Why the program did not quit after all, until the user has read it; otherwise empty.
    Q_PROPERTY(QString failure READ failure NOTIFY failureChanged)

public:
    using QObject::QObject;

    bool isAsked() const { return m_isAsked; }
    void setAsked(bool isAsked);
    int exportCount() const { return m_exportCount; }
    void setExportCount(int count);
    QString failure() const { return m_failure; }
    void setFailure(const QString& message);

    // The answers. They close the question, and do nothing if it is closed.
    Q_INVOKABLE void quitWhenDone() { answer(&QuitQuestion::whenDoneChosen); }
    Q_INVOKABLE void quitNow() { answer(&QuitQuestion::nowChosen); }
    Q_INVOKABLE void dismiss() { answer(&QuitQuestion::dismissed); }

    Q_INVOKABLE void dismissFailure() { setFailure({}); }

Q_SIGNALS:
    void isAskedChanged();
    void exportCountChanged();
    void failureChanged();
    void whenDoneChosen();
    void nowChosen();
    void dismissed();

private:
    void answer(void (QuitQuestion::*signal)());

    bool m_isAsked = false;
    int m_exportCount = 0;
    QString m_failure;
};

} // namespace quelto
