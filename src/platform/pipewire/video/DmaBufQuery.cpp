// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/pipewire/video/DmaBufQuery.h"

#include "platform/pipewire/video/VideoFormats.h"

// Without it the header includes those of X11.
#define EGL_NO_X11
#include <EGL/egl.h>
#include <EGL/eglext.h>

namespace quelto::pipewire {

namespace {

/// DRM_FORMAT_MOD_INVALID: the driver finds out the layout itself.
constexpr std::uint64_t ImplicitModifier = 0x00ff'ffff'ffff'ffff;
constexpr EGLint MaxDevices = 16;

template <typename Function> Function loadFunction(const char* name)
{
    return reinterpret_cast<Function>(eglGetProcAddress(name));
}

bool hasWord(const char* words, const QByteArray& word)
{
    return QByteArray(words ? words : "").split(' ').contains(word);
}

/// A renderer without a graphics card has no device file.
bool isGraphicsCard(EGLDeviceEXT device)
{
    const auto queryString = loadFunction<PFNEGLQUERYDEVICESTRINGEXTPROC>("eglQueryDeviceStringEXT");
    return queryString && hasWord(queryString(device, EGL_EXTENSIONS), "EGL_EXT_device_drm") &&
        queryString(device, EGL_DRM_DEVICE_FILE_EXT);
}

/// The EGL display is not terminated: it belongs to the process, and another user of the same card would lose it.
class GraphicsCard {
public:
    GraphicsCard()
    {
        const auto queryDevices = loadFunction<PFNEGLQUERYDEVICESEXTPROC>("eglQueryDevicesEXT");
        const auto getDisplay = loadFunction<PFNEGLGETPLATFORMDISPLAYEXTPROC>("eglGetPlatformDisplayEXT");
        std::array<EGLDeviceEXT, MaxDevices> devices = {};
        EGLint count = 0;
        if (!queryDevices || !getDisplay || !queryDevices(MaxDevices, devices.data(), &count)) {
            return;
        }
        const auto found = std::span(devices).first(static_cast<std::size_t>(std::clamp(count, 0, MaxDevices)));
        const auto card = std::ranges::find_if(found, isGraphicsCard);
        if (card == found.end()) {
            return;
        }
        m_display = getDisplay(EGL_PLATFORM_DEVICE_EXT, *card, nullptr);
        m_isReady = m_display != EGL_NO_DISPLAY && eglInitialize(m_display, nullptr, nullptr) &&
            hasWord(eglQueryString(m_display, EGL_EXTENSIONS), "EGL_EXT_image_dma_buf_import_modifiers");
    }
    std::vector<std::uint64_t> modifiersOf(std::uint32_t format) const
    {
        const auto query = loadFunction<PFNEGLQUERYDMABUFMODIFIERSEXTPROC>("eglQueryDmaBufModifiersEXT");
        const auto code = static_cast<EGLint>(format);
        EGLint count = 0;
        if (!m_isReady || !query || !query(m_display, code, 0, nullptr, nullptr, &count) || count <= 0) {
            return {};
        }
        std::vector<EGLuint64KHR> modifiers(static_cast<std::size_t>(count));
        if (!query(m_display, code, count, modifiers.data(), nullptr, &count)) {
            return {};
        }
        modifiers.resize(std::min(modifiers.size(), static_cast<std::size_t>(std::max(count, 0))));
        return {modifiers.begin(), modifiers.end()};
    }

private:
    EGLDisplay m_display = EGL_NO_DISPLAY;
    bool m_isReady = false;
};

} // namespace

std::vector<DmaBufFormat> queryDmaBufFormats()
{
    const GraphicsCard card;
    std::vector<DmaBufFormat> formats;
    for (const std::uint32_t format : dmaBufPixelFormats()) {
        std::vector<std::uint64_t> modifiers = card.modifiersOf(format);
        if (!modifiers.empty()) {
            // For compositors that know no modifiers.
            if (std::ranges::find(modifiers, ImplicitModifier) == modifiers.end()) {
                modifiers.push_back(ImplicitModifier);
            }
            formats.push_back({.format = format, .modifiers = std::move(modifiers)});
        }
    }
    return formats;
}

} // namespace quelto::pipewire
