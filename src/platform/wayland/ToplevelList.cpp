// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/wayland/ToplevelList.h"

#include <algorithm>
#include <span>

#include <wlr-foreign-toplevel-management-unstable-v1-client-protocol.h>

namespace quelto {

struct ToplevelList::Window {
    Window(ToplevelList& owner, zwlr_foreign_toplevel_handle_v1* object)
        : list(owner)
        , handle(object)
    {
    }
    ~Window() { zwlr_foreign_toplevel_handle_v1_destroy(handle); }
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    ToplevelList& list;
    zwlr_foreign_toplevel_handle_v1* handle;
    State next;
    State current;
};

struct ToplevelList::Listeners {
    static Window& window(void* self) { return *static_cast<Window*>(self); }

    static constexpr zwlr_foreign_toplevel_manager_v1_listener Manager{
        .toplevel = [](void* self, zwlr_foreign_toplevel_manager_v1*,
                       zwlr_foreign_toplevel_handle_v1* handle) { static_cast<ToplevelList*>(self)->add(handle); },
        .finished =
            [](void* self, zwlr_foreign_toplevel_manager_v1* manager) {
                auto& list = *static_cast<ToplevelList*>(self);
                list.m_windows.clear();
                list.m_manager = nullptr;
                zwlr_foreign_toplevel_manager_v1_destroy(manager);
            }};

    static constexpr zwlr_foreign_toplevel_handle_v1_listener Handle{
        .title = [](void* self, zwlr_foreign_toplevel_handle_v1*,
                    const char* title) { window(self).next.title = QString::fromUtf8(title); },
        .app_id = [](void* self, zwlr_foreign_toplevel_handle_v1*,
                     const char* id) { window(self).next.applicationID = QString::fromUtf8(id); },
        .output_enter = [](void*, zwlr_foreign_toplevel_handle_v1*, wl_output*) {},
        .output_leave = [](void*, zwlr_foreign_toplevel_handle_v1*, wl_output*) {},
        .state =
            [](void* self, zwlr_foreign_toplevel_handle_v1*, wl_array* states) {
                const std::span all(static_cast<const std::uint32_t*>(states->data),
                                    states->size / sizeof(std::uint32_t));
                constexpr std::uint32_t Active = ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_ACTIVATED;
                window(self).next.isActive = std::ranges::find(all, Active) != all.end();
            },
        .done = [](void* self, zwlr_foreign_toplevel_handle_v1*) { window(self).list.commit(window(self)); },
        .closed = [](void* self, zwlr_foreign_toplevel_handle_v1*) { window(self).list.remove(window(self)); }};
};

ToplevelList::ToplevelList(zwlr_foreign_toplevel_manager_v1* manager)
    : m_manager(manager)
{
    zwlr_foreign_toplevel_manager_v1_add_listener(m_manager, &Listeners::Manager, this);
}

ToplevelList::~ToplevelList()
{
    if (m_manager != nullptr) {
        zwlr_foreign_toplevel_manager_v1_destroy(m_manager);
    }
}

std::unique_ptr<ToplevelList> ToplevelList::tryMake(WaylandConnection& connection)
{
    auto* const manager =
        connection.tryBind<zwlr_foreign_toplevel_manager_v1>(zwlr_foreign_toplevel_manager_v1_interface);
    return manager == nullptr ? nullptr : std::unique_ptr<ToplevelList>(new ToplevelList(manager));
}

std::optional<WindowIdentity> ToplevelList::active() const
{
    const auto found =
        std::find_if(m_windows.rbegin(), m_windows.rend(), [](const auto& window) { return window->current.isActive; });
    if (found == m_windows.rend()) {
        return std::nullopt;
    }
    const State& state = (*found)->current;
    return WindowIdentity{.windowClass = state.applicationID,
                          .title = state.title,
                          .applicationID = applicationIDFrom(state.applicationID)};
}

void ToplevelList::add(zwlr_foreign_toplevel_handle_v1* handle)
{
    auto window = std::make_unique<Window>(*this, handle);
    zwlr_foreign_toplevel_handle_v1_add_listener(handle, &Listeners::Handle, window.get());
    m_windows.push_back(std::move(window));
}

void ToplevelList::commit(Window& window)
{
    const bool isNewlyActive = window.next.isActive && !window.current.isActive;
    window.current = window.next;
    if (isNewlyActive) {
        const auto found = std::ranges::find(m_windows, &window, &std::unique_ptr<Window>::get);
        std::rotate(found, std::next(found), m_windows.end());
    }
}

void ToplevelList::remove(Window& window)
{
    std::erase_if(m_windows, [&](const auto& each) { return each.get() == &window; });
}

} // namespace quelto
