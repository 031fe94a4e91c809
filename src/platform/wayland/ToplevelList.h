// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/applications/WindowIdentity.h"
#include "platform/wayland/WaylandConnection.h"

#include <memory>
#include <vector>

struct zwlr_foreign_toplevel_handle_v1;
struct zwlr_foreign_toplevel_manager_v1;

namespace quelto {

/// The windows of all programs, as compositors list them for task bars (wlr-foreign-toplevel-management).
///
/// Thread: the one that dispatches the connection, which must outlive the list.
class ToplevelList {
public:
    /// Null if the compositor offers no list. The windows are known after two round trips.
    static std::unique_ptr<ToplevelList> tryMake(WaylandConnection& connection);
    ~ToplevelList();
    ToplevelList(const ToplevelList&) = delete;
    ToplevelList& operator=(const ToplevelList&) = delete;

    /// The window with the keyboard focus. With several seats, the one that got it last.
    std::optional<WindowIdentity> active() const;

private:
    struct State {
        QString title;
        QString applicationID;
        bool isActive = false;
    };
    struct Window;
    struct Listeners;

    explicit ToplevelList(zwlr_foreign_toplevel_manager_v1* manager);
    void add(zwlr_foreign_toplevel_handle_v1* handle);
    /// Makes the changes since the last time visible.
    void commit(Window& window);
    void remove(Window& window);

    /// Null after the compositor has ended the list.
    zwlr_foreign_toplevel_manager_v1* m_manager;
    /// The one that became active last comes last.
    std::vector<std::unique_ptr<Window>> m_windows;
};

} // namespace quelto
