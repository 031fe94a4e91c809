// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Trash.h"

#include <QFile>
#include <QStringList>

namespace quelto::test {

/// Records and deletes the files it is given. The test calls `answer`.
class RecordingTrash final : public Trash {
public:
    void moveToTrash(const QStringList& paths, std::function<void()> done) override
    {
        recycled += paths;
        ++calls;
        std::ranges::for_each(paths, [](const QString& path) { QFile::remove(path); });
        answer = std::move(done);
    }

    QStringList recycled;
    int calls = 0;
    std::function<void()> answer;
};

} // namespace quelto::test
