// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shared/Navigation.h"

#include "library/matches/MatchSession.h"

#include <QMetaEnum>
#include <QPointer>

namespace quelto {

namespace {

constexpr std::chrono::milliseconds ToastDuration{2500};

} // namespace

Navigation::Navigation(TaskQueue& main, QObject* parent)
    : QObject(parent)
    , m_main(main)
{
}

QString Navigation::matchId() const
{
    return m_page.match.isNull() ? QString() : matchIdText(m_page.match);
}

void Navigation::setPage(const Page& page)
{
    if (m_page != page) {
        m_page = page;
        Q_EMIT pageChanged();
    }
}

void Navigation::setSelected(const std::optional<Clip>& clip)
{
    if (m_selected != clip) {
        m_selected = clip;
        Q_EMIT selectedChanged();
    }
}

void Navigation::show(const Page& page)
{
    setSelected(std::nullopt);
    setPage(page);
}

void Navigation::leaveMatch(const QUuid& match)
{
    if (m_page.match == match) {
        setPage({.kind = Pages::Kind::Matches});
    }
}

void Navigation::showToast(const QString& text)
{
    setToast(text);
    const QPointer<Navigation> navigation(this);
    m_main.postAfter(ToastDuration, [navigation, text] {
        auto* const self = navigation.data();
        if (self != nullptr && self->m_toast == text) {
            self->setToast({});
        }
    });
}

void Navigation::setToast(const QString& text)
{
    if (m_toast != text) {
        m_toast = text;
        Q_EMIT toastChanged();
    }
}

QString pageText(const Page& page)
{
    const auto kind =
        QString::fromLatin1(QMetaEnum::fromType<Pages::Kind>().valueToKey(static_cast<int>(page.kind))).toLower();
    if (page.game) {
        return kind + u' ' + page.game->name.value_or(QStringLiteral("(no game)"));
    }
    return page.match.isNull() ? kind : kind + u' ' + matchIdText(page.match);
}

} // namespace quelto
