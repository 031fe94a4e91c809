// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/FileManager.h"
#include "platform/FolderDialog.h"
#include "platform/LoginItem.h"
#include "platform/Pasteboard.h"
#include "platform/SoundSettings.h"

#include <QImage>
#include <QStringList>

#include <memory>

namespace quelto::test {

/// Records the paths it is asked to show.
class RecordingFileManager final : public FileManager {
public:
    void reveal(const QString& path) override { revealed.append(path); }
    void openFolder(const QString& path) override { opened.append(path); }

    QStringList revealed;
    QStringList opened;
};

/// Records the file, the picture and the text that were copied last.
class RecordingPasteboard final : public Pasteboard {
public:
    void setFile(const QString& path) override { file = path; }
    void setImage(const QImage& picture) override { image = picture; }
    void setText(const QString& copied) override { text = copied; }

    QString file;
    QImage image;
    QString text;
};

/// Keeps its state in memory. Replies at once.
class FakeLoginItem final : public LoginItem {
public:
    void read(Reply reply) override { reply({.isEnabled = isEnabled}); }
    void setEnabled(bool value, Reply reply) override
    {
        if (failure.isEmpty()) {
            isEnabled = value;
        }
        reply({.isEnabled = isEnabled, .failure = failure});
    }

    bool isEnabled = false;
    /// With this, changes fail.
    QString failure;
};

/// Records the last request; the test confirms it by calling its reply.
class RecordingFolderDialog final : public FolderDialog {
public:
    void choose(const Request& wanted, Reply onConfirmed) override
    {
        request = wanted;
        reply = std::move(onConfirmed);
    }

    Request request;
    Reply reply;
};

/// Counts how often it is opened.
class RecordingSoundSettings final : public SoundSettings {
public:
    bool isAvailable() const override { return isInstalled; }
    void open() override { ++openings; }

    bool isInstalled = true;
    int openings = 0;
};

/// Puts a fake in the place of a platform's service.
template <typename Fake, typename Service> Fake& useFake(std::unique_ptr<Service>& service)
{
    auto fake = std::make_unique<Fake>();
    auto& used = *fake;
    service = std::move(fake);
    return used;
}

} // namespace quelto::test
