// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>

#include <cmath>
#include <filesystem>
#include <fstream>

namespace quelto {

/// A temporary folder, with the file operations that log tests need.
class TestFolder {
public:
    std::filesystem::path path() const { return m_folder.path().toStdString(); }

    std::filesystem::path makeFolder(const std::filesystem::path& name) const
    {
        std::filesystem::create_directories(path() / name);
        return path() / name;
    }

    static void write(const std::filesystem::path& file, const QByteArray& bytes)
    {
        std::ofstream(file, std::ios::binary | std::ios::trunc).write(bytes.data(), bytes.size());
    }

    static void append(const std::filesystem::path& file, const QByteArray& bytes)
    {
        std::ofstream(file, std::ios::binary | std::ios::app).write(bytes.data(), bytes.size());
    }

    static void setModified(const std::filesystem::path& file, double seconds)
    {
        timespec time{};
        time.tv_sec = static_cast<time_t>(std::floor(seconds));
        time.tv_nsec = std::lround(1e9 * (seconds - std::floor(seconds)));
        const timespec times[]{time, time};
        EXPECT_EQ(::utimensat(AT_FDCWD, file.c_str(), times, 0), 0);
    }

private:
    QTemporaryDir m_folder;
};

} // namespace quelto
