// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/thumbnails/ThumbnailCache.h"

#include "base/tasks/BackgroundThreads.h"
#include "library/thumbnails/ThumbnailLru.h"

#include <map>

namespace quelto {

namespace {

/// A few screens full of cards.
constexpr qsizetype PictureBytes = qsizetype{192} << 20U;

int threadCount()
{
    return static_cast<int>(std::clamp(std::thread::hardware_concurrency() / 2, 2U, 4U));
}

} // namespace

struct ThumbnailCache::State {
    struct Request {
        QString path;
        /// Empty once it ran.
        Callback callback;
    };
    struct Read {
        /// Its turn among those that wait; nothing once it has begun.
        std::optional<quint64> turn;
        QList<quint64> tickets;
    };

    explicit State(const Dependencies& parts)
        : main(parts.main)
        , read(parts.read)
        , pictures(parts.byteLimit)
    {
    }

    TaskQueue& main;
    const std::function<ClipReader(const QString&, const std::stop_token&)> read;
    std::stop_source stop;

    std::mutex lock;
    ThumbnailLru pictures;
    QHash<QString, ClipInfo> infos;
    QHash<quint64, Request> wishes;
    QHash<QString, Read> reads;
    /// By turn, the newest last.
    std::map<quint64, QString> waiting;
    quint64 lastNumber = 0;
    /// Nothing goes to the main queue any more.
    bool isEnding = false;

    void withdraw(quint64 number);
    static void readNewest(const std::shared_ptr<State>& state);
    void keep(const std::shared_ptr<State>& self, const QString& path, const ClipReader& reading);
    void deliver(quint64 number, const QImage& picture, const ClipInfo& info);
};

void ThumbnailCache::State::withdraw(quint64 number)
{
    // Destroyed behind the lock: what a callback holds may be another ticket.
    Request wish;
    const std::scoped_lock guard(lock);
    wish = wishes.take(number);
    pictures.unpin(wish.path);
    const auto reading = reads.find(wish.path);
    if (reading == reads.end() || !reading->tickets.removeOne(number)) {
        return;
    }
    if (reading->tickets.isEmpty() && reading->turn) {
        waiting.erase(*reading->turn);
        reads.erase(reading);
    }
}

void ThumbnailCache::State::readNewest(const std::shared_ptr<State>& state)
{
    QString path;
    {
        const std::scoped_lock guard(state->lock);
        if (state->waiting.empty()) {
            return;
        }
        path = state->waiting.extract(std::prev(state->waiting.end())).mapped();
        state->reads[path].turn.reset();
    }
    const auto reading = state->read(path, state->stop.get_token());
    state->keep(state, path, reading);
}

void ThumbnailCache::State::keep(const std::shared_ptr<State>& self, const QString& path, const ClipReader& reading)
{
    const auto& info = reading.facts;
    const std::scoped_lock guard(lock);
    if (isEnding) {
        return;
    }
    infos.insert(path, info);
    if (!reading.picture.isNull()) {
        pictures.put(path, reading.picture);
    }
    const auto tickets = reads.take(path).tickets;
    if (tickets.isEmpty()) {
        return;
    }
    main.post([state = std::weak_ptr(self), tickets, picture = reading.picture, info] {
        for (const auto number : tickets) {
            if (const auto living = state.lock()) {
                living->deliver(number, picture, info);
            }
        }
    });
}

void ThumbnailCache::State::deliver(quint64 number, const QImage& picture, const ClipInfo& info)
{
    Callback callback;
    {
        const std::scoped_lock guard(lock);
        if (const auto wish = wishes.find(number); wish != wishes.end()) {
            callback = std::exchange(wish->callback, nullptr);
        }
    }
    if (callback) {
        callback(picture, info);
    }
}

ThumbnailCache::Ticket::Ticket(std::weak_ptr<State> state, quint64 number)
    : m_state(std::move(state))
    , m_number(number)
{
}

ThumbnailCache::Ticket::Ticket(Ticket&& other) noexcept
    : m_state(std::exchange(other.m_state, {}))
    , m_number(other.m_number)
{
}

ThumbnailCache::Ticket& ThumbnailCache::Ticket::operator=(Ticket&& other) noexcept
{
    if (this != &other) {
        drop();
        m_state = std::exchange(other.m_state, {});
        m_number = other.m_number;
    }
    return *this;
}

void ThumbnailCache::Ticket::drop() noexcept
{
    // Empty first: withdrawing destroys the callback, and with it what may hold this very ticket.
    if (const auto state = std::exchange(m_state, {}).lock()) {
        state->withdraw(m_number);
    }
}

ThumbnailCache::ThumbnailCache(TaskQueue& main)
    : m_threads(std::make_unique<BackgroundThreads>(QStringLiteral("quelto.thumbs"), threadCount()))
    , m_state(std::make_shared<State>(Dependencies{
          .main = main,
          .work = {},
          .read = [](const QString& path, const std::stop_token& stop) { return readClip(path, stop); },
          .byteLimit = PictureBytes,
      }))
    , m_work([this](Task task) { m_threads->post(std::move(task)); })
{
}

ThumbnailCache::ThumbnailCache(const Dependencies& parts)
    : m_state(std::make_shared<State>(parts))
    , m_work(parts.work)
{
}

ThumbnailCache::~ThumbnailCache()
{
    m_state->stop.request_stop();
    QHash<quint64, State::Request> dropped;
    {
        const std::scoped_lock guard(m_state->lock);
        m_state->isEnding = true;
        m_state->waiting.clear();
        m_state->reads.clear();
        dropped.swap(m_state->wishes);
    }
}

QImage ThumbnailCache::cachedImage(const QString& path) const
{
    const std::scoped_lock guard(m_state->lock);
    return m_state->pictures.find(path);
}

std::optional<ClipInfo> ThumbnailCache::cachedInfo(const QString& path) const
{
    const std::scoped_lock guard(m_state->lock);
    const auto found = m_state->infos.constFind(path);
    return found == m_state->infos.cend() ? std::nullopt : std::optional(*found);
}

ThumbnailCache::Ticket ThumbnailCache::load(const QString& path, Callback callback)
{
    std::unique_lock guard(m_state->lock);
    const auto number = ++m_state->lastNumber;
    Ticket ticket(m_state, number);
    m_state->pictures.pin(path);
    auto& wish = m_state->wishes[number];
    wish.path = path;
    const auto picture = m_state->pictures.find(path);
    if (!picture.isNull()) {
        // Wherever there is a picture there is data: both are stored in one go.
        const auto info = m_state->infos.value(path);
        guard.unlock();
        callback(picture, info);
        return ticket;
    }
    wish.callback = std::move(callback);
    const bool isNew = !m_state->reads.contains(path);
    auto& reading = m_state->reads[path];
    reading.tickets.append(number);
    if (isNew || reading.turn) {
        if (reading.turn) {
            m_state->waiting.erase(*reading.turn);
        }
        reading.turn = number;
        m_state->waiting.emplace(number, path);
    }
    guard.unlock();
    if (isNew) {
        m_work([state = m_state] { State::readNewest(state); });
    }
    return ticket;
}

} // namespace quelto
