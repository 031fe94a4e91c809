// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shell/QuitQuestion.h"

namespace quelto {

void QuitQuestion::setAsked(bool isAsked)
{
    if (std::exchange(m_isAsked, isAsked) != isAsked) {
        Q_EMIT isAskedChanged();
    }
}

void QuitQuestion::setExportCount(int count)
{
    if (std::exchange(m_exportCount, count) != count) {
        Q_EMIT exportCountChanged();
    }
}

void QuitQuestion::setFailure(const QString& message)
{
    if (std::exchange(m_failure, message) != message) {
        Q_EMIT failureChanged();
    }
}

void QuitQuestion::answer(void (QuitQuestion::*signal)())
{
    if (m_isAsked) {
        setAsked(false);
        Q_EMIT(this->*signal)();
    }
}

} // namespace quelto
