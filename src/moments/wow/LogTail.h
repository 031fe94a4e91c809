// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "moments/wow/LogFolders.h"
#include "moments/wow/LogLines.h"

#include <list>

namespace quelto {

/// Reads what is added to a combat log, also when it is truncated, replaced, or when another one takes its place.
///
/// Errors: a log that cannot be opened or read is tried again at the next call; there is no message.
/// Owns: the logs that it has read lately stay open, so that the system gives their identity to no other file.
class LogTail {
public:
    static constexpr std::uint64_t MostBytesAtOnce = 33'554'432;
    /// How many logs it knows, and how many places. The one followed longest ago is forgotten.
    static constexpr std::size_t MostKnown = 16;

    explicit LogTail(LogLines::OnLine onLine);
    ~LogTail();
    LogTail(const LogTail&) = delete;
    LogTail& operator=(const LogTail&) = delete;

    /// Goes on in this log, as it was just found, and reads what is new. age: seconds since it was last written.
    ///
    /// What a log holds when it is first met is the past, unless the game has only just begun it. A log in a place
    /// where another one was read is all new. One that was read before goes on where it was, whatever its name is now.
    void follow(const LogFile& log, double age);
    /// Forgets all logs and places.
    void close();

private:
    class Descriptor {
    public:
        explicit Descriptor(int number);
        ~Descriptor();
        Descriptor(const Descriptor&) = delete;
        Descriptor& operator=(const Descriptor&) = delete;

        int number() const { return m_number; }

    private:
        int m_number;
    };

    struct Followed {
        explicit Followed(const LogFile& log);

        Descriptor file;
        FileIdentity identity;
        std::uint64_t offset = 0;
        LogLines lines;
    };

    /// Where a log was read, and which one was the last there.
    struct Place {
        std::filesystem::path path;
        FileIdentity identity;
    };

    bool isKnownPlace(const std::filesystem::path& path) const;
    /// Makes the log the first of those followed. False if it cannot be opened.
    bool turnTo(const LogFile& log, double age);
    void forgetDeleted();
    void forgetOldest();
    void notePlace(const LogFile& log);
    void readUpTo(Followed& log, std::uint64_t end);

    LogLines::OnLine m_onLine;
    std::vector<char> m_block;
    /// The one at hand comes first, then by when they were followed last; so do the places.
    std::list<Followed> m_followed;
    std::list<Place> m_places;
};

} // namespace quelto
