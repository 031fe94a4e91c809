// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/factory/NullPlatform.h"

#include "platform/PlatformError.h"

namespace quelto {

namespace {

class NullDisplays final : public Displays {
public:
    /// One display, so that a recording asks the frame source, which knows the reason.
    QList<DisplayInfo> all() const override { return {{.id = 1, .isMain = true}}; }
    bool areChosenByTheDesktop() const override { return true; }
};

class NullFrameSource final : public FrameSource {
public:
    explicit NullFrameSource(QString message)
        : m_message(std::move(message))
    {
    }

    QSize open(const FrameSourceRequest& /*request*/, const std::stop_token& /*cancelled*/) override
    {
        throw PlatformError(m_message);
    }
    void start(const FrameSourceSettings& /*settings*/, FrameSourceEvents /*events*/) override { }
    void stop() noexcept override { }

private:
    QString m_message;
};

} // namespace

std::unique_ptr<Displays> makeNullDisplays()
{
    return std::make_unique<NullDisplays>();
}

std::unique_ptr<FrameSource> makeNullFrameSource(const QString& message)
{
    return std::make_unique<NullFrameSource>(message);
}

} // namespace quelto
