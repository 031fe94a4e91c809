// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

namespace quelto {

/// Work on a thread of its own that ends something, such as a player whose file is on a disk that hangs. It lasts until
/// the object and its copies are destroyed. The process waits for such work when it exits, because destructors of
/// libraries would run under it; after two seconds it exits all the same.
///
/// Thread: any.
class EndingWork {
public:
    EndingWork();

private:
    std::shared_ptr<void> m_token;
};

} // namespace quelto
