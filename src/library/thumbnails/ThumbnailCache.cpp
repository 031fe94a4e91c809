// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/thumbnails/ThumbnailCache.h"

#include "base/tasks/BackgroundThreads.h"
#include "library/thumbnails/ThumbnailLru.h"

#include <map>

namespace quelto {

namespace {

/// Enough for several screens of cards.
constexpr qsizetype MaxPictureBytes = qsizetype{192} << 20U;

int threadCount()
{
    return static_cast<int>(std::clamp(std::thread::hardware_concurrency() / 2, 2U, 4U));
}

} // namespace

struct ThumbnailCache::State {
    struct Request {
        QString path;
        /// Empty after the call.
        Callback callback;
    };
    struct Read {
        /// The key in `waiting`; nothing after the read has started.
        std::optional<quint64> position;
        QList<quint64> tickets;
    };

    explicit State(const Dependencies& dependencies)
        : main(dependencies.main)
        , read(dependencies.read)
        , pictures(dependencies.byteLimit)
    {
    }

    TaskQueue& main;
    const std::function<ClipPreview(const QString&, const std::stop_token&)> read;
    std::stop_source stop;

    std::mutex lock;
    ThumbnailLru pictures;
    QHash<QString, ClipInfo> infos;
    QHash<quint64, Request> requests;
    QHash<QString, Read> reads;
    /// Paths by the number of their newest request.
    std::map<quint64, QString> waiting;
    quint64 lastNumber = 0;
    /// The cache is destroyed, and the main queue may be gone.
    bool isClosed = false;

    void cancel(quint64 number);
    static void readNewest(const std::shared_ptr<State>& state);
    void store(const std::shared_ptr<State>& self, const QString& path, const ClipPreview& result);
    void deliver(quint64 number, const QImage& picture, const ClipInfo& info);
};

void ThumbnailCache::State::cancel(quint64 number)
{
    // Destroyed after the lock is released, because the callback may own another ticket.
    Request request;
    const std::scoped_lock guard(lock);
    request = requests.take(number);
    pictures.unpin(request.path);
    const auto pending = reads.find(request.path);
    if (pending == reads.end() || !pending->tickets.removeOne(number)) {
        return;
    }
    if (pending->tickets.isEmpty() && pending->position) {
        waiting.erase(*pending->position);
        reads.erase(pending);
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
        state->reads[path].position.reset();
    }
    const auto result = state->read(path, state->stop.get_token());
    state->store(state, path, result);
}

void ThumbnailCache::State::store(const std::shared_ptr<State>& self, const QString& path, const ClipPreview& result)
{
    const auto& info = result.info;
    const std::scoped_lock guard(lock);
    if (isClosed) {
        return;
    }
    infos.insert(path, info);
    if (!result.thumbnail.isNull()) {
        pictures.put(path, result.thumbnail);
    }
    const auto tickets = reads.take(path).tickets;
    if (tickets.isEmpty()) {
        return;
    }
    main.post([state = std::weak_ptr(self), tickets, picture = result.thumbnail, info] {
        for (const auto number : tickets) {
            if (const auto locked = state.lock()) {
                locked->deliver(number, picture, info);
            }
        }
    });
}

void ThumbnailCache::State::deliver(quint64 number, const QImage& picture, const ClipInfo& info)
{
    Callback callback;
    {
        const std::scoped_lock guard(lock);
        if (const auto request = requests.find(number); request != requests.end()) {
            callback = std::exchange(request->callback, nullptr);
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
    // Reset the member first: cancelling destroys the callback, which may own this ticket.
    if (const auto state = std::exchange(m_state, {}).lock()) {
        state->cancel(m_number);
    }
}

ThumbnailCache::ThumbnailCache(TaskQueue& main)
    : m_threads(std::make_unique<BackgroundThreads>(QStringLiteral("quelto.thumbs"), threadCount()))
    , m_state(std::make_shared<State>(Dependencies{
          .main = main,
          .work = {},
          .read = [](const QString& path, const std::stop_token& stop) { return readClip(path, stop); },
          .byteLimit = MaxPictureBytes,
      }))
    , m_work([this](Task task) { m_threads->post(std::move(task)); })
{
}

ThumbnailCache::ThumbnailCache(const Dependencies& dependencies)
    : m_state(std::make_shared<State>(dependencies))
    , m_work(dependencies.work)
{
}

ThumbnailCache::~ThumbnailCache()
{
    m_state->stop.request_stop();
    // Destroyed after the lock is released, because the callbacks may own tickets.
    QHash<quint64, State::Request> dropped;
    {
        const std::scoped_lock guard(m_state->lock);
        m_state->isClosed = true;
        m_state->waiting.clear();
        m_state->reads.clear();
        dropped.swap(m_state->requests);
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
    auto& request = m_state->requests[number];
    request.path = path;
    const auto picture = m_state->pictures.find(path);
    if (!picture.isNull()) {
        // Picture and data are always stored together.
        const auto info = m_state->infos.value(path);
        guard.unlock();
        callback(picture, info);
        return ticket;
    }
    request.callback = std::move(callback);
    const bool isNew = !m_state->reads.contains(path);
    auto& pending = m_state->reads[path];
    pending.tickets.append(number);
    if (isNew || pending.position) {
        if (pending.position) {
            m_state->waiting.erase(*pending.position);
        }
        pending.position = number;
        m_state->waiting.emplace(number, path);
    }
    guard.unlock();
    if (isNew) {
        m_work([state = m_state] { State::readNewest(state); });
    }
    return ticket;
}

} // namespace quelto
