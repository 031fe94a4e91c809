// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/clip/ClipFrames.h"

#include "base/language/T.h"
#include "export/errors/ExportError.h"
#include "export/queue/ExportControl.h"

namespace quelto {

ClipFrames::ClipFrames(Dependencies dependencies, QObject* parent)
    : QObject(parent)
    , m_dependencies(std::move(dependencies))
    , m_replies(std::make_shared<DetachableQueue>(m_dependencies.main))
{
}

ClipFrames::~ClipFrames()
{
    stop();
}

void ClipFrames::stop()
{
    m_stop.request_stop();
    m_replies->detach();
}

void ClipFrames::save(const QString& path, double seconds)
{
    if (m_saving.contains(path)) {
        return;
    }
    m_saving.insert(path);
    Q_EMIT savingChanged(path);
    m_dependencies.work.post(
        [this, replies = m_replies, stop = m_stop.get_token(), save = m_dependencies.save, path, seconds] {
            auto outcome = outcomeOf([&] { return save(path, seconds, stop); });
            replies->post([this, path, outcome = std::move(outcome)] { end(path, outcome); });
        });
}

ClipFrames::Outcome ClipFrames::outcomeOf(const std::function<SavedFrame()>& work)
{
    try {
        return {.image = work().image, .message = {}};
    } catch (const ExportStopped&) {
        return {};
    } catch (...) {
        return {.image = {}, .message = T("Kare kaydedilemedi: {0}", ExportError::fromCurrentException().reason())};
    }
}

void ClipFrames::end(const QString& path, const Outcome& outcome)
{
    m_saving.remove(path);
    Q_EMIT savingChanged(path);
    if (outcome.image) {
        m_dependencies.pasteboard.setImage(*outcome.image);
        m_dependencies.navigation.showToast(T("Kare kaydedildi ve panoya kopyalandı"));
    } else if (!outcome.message.isEmpty()) {
        m_dependencies.navigation.showToast(outcome.message);
    }
}

} // namespace quelto
