// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <functional>

namespace quelto {

/// Starts Quelto when the user logs in.
///
/// The state is in files of the user's home folder, which may be on a disk that does not respond. The files are
/// therefore read and written in the background, one request after the other.
///
/// Thread: main. A reply arrives from the event loop, and never after this object is destroyed.
/// Errors: in the result.
class LoginItem {
public:
    struct Result {
        /// What the desktop will do at the next login, also after a failed change.
        bool isEnabled = false;
        /// A translated sentence for the user; empty if the request succeeded.
        QString failure = {};
    };
    using Reply = std::function<void(const Result&)>;

    virtual ~LoginItem() = default;

    virtual void read(Reply reply) = 0;
    virtual void setEnabled(bool isEnabled, Reply reply) = 0;
};

} // namespace quelto
