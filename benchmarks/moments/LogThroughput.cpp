// SPDX-License-Identifier: GPL-3.0-or-later
// Measures reading a combat log, from the file to the moments, in comparison with a grep for the same four words.
//
//     bench_log_throughput [--megabytes N] [--runs N] [--log FILE]
//
// Generates a log in the game's format (about 500 MB in the temporary folder, unless one is given), reads it with both
// in turn from the page cache, and prints the medians in MB/s and the median ratio.
#include "base/time/HostClock.h"
#include "moments/wow/LogTail.h"
#include "moments/wow/WowFights.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

#include <cstdio>
#include <fstream>
#include <random>

namespace {

using namespace quelto;

namespace fs = std::filesystem;

/// A line template with its relative frequency in a raid; "%d" is a number that differs from line to line.
struct LineTemplate {
    int weight;
    const char* text;
};

constexpr LineTemplate LineTemplates[]{
    {300,
     "SPELL_DAMAGE,Player-1403-0A6F33C2,\"Çağla-Kazzak\",0x511,0x0,Creature-0-4255-2549-7-209333-0000%d,"
     "\"Gnarlroot\",0x10a48,0x0,49998,\"Death Strike\",0x1,Creature-0-4255-2549-7-209333-000037B1C4,"
     "0000000000000000,%d,98431200,0,0,5043,0,3,%d,100,0,2012.31,-1507.02,2232,4.1182,73,%d,%d,-1,1,0,0,0,1,nil,nil"},
    {200,
     "SPELL_PERIODIC_DAMAGE,Player-1403-09B21E01,\"Thörgrim-Kazzak\",0x514,0x0,Creature-0-4255-2549-7-209333-0000%d,"
     "\"Gnarlroot\",0x10a48,0x0,55078,\"Blood Plague\",0x20,Creature-0-4255-2549-7-209333-000037B1C4,"
     "0000000000000000,%d,98431200,0,0,5043,0,1,0,0,0,2012.31,-1507.02,2232,4.1182,73,%d,%d,-1,32,0,0,0,nil,nil,nil"},
    {200,
     "SPELL_AURA_APPLIED,Player-3674-0AA0F1D7,\"Лунная-Гордунни\",0x514,0x0,Player-1403-0A6F33C2,"
     "\"Çağla-Kazzak\",0x511,0x0,%d,\"Renewing Mist\",0x8,BUFF"},
    {150,
     "SPELL_HEAL,Player-3674-0AA0F1D7,\"Лунная-Гордунни\",0x514,0x0,Player-1403-0A6F33C2,\"Çağla-Kazzak\",0x511,"
     "0x0,119611,\"Renewing Mist\",0x8,Player-1403-0A6F33C2,0000000000000000,%d,812340,5012,9043,7011,0,6,%d,1250,0,"
     "2010.11,-1511.90,2232,1.0021,489,%d,%d,0,0,nil"},
    {120,
     "SPELL_CAST_SUCCESS,Player-1403-0A6F33C2,\"Çağla-Kazzak\",0x511,0x0,0000000000000000,nil,0x80000000,"
     "0x80000000,%d,\"Heart Strike\",0x1,Player-1403-0A6F33C2,0000000000000000,%d,812340,5012,9043,7011,0,6,%d,1250,"
     "0,2010.11,-1511.90,2232,1.0021,489"},
    {80,
     "SWING_DAMAGE,Creature-0-4255-2549-7-209333-0000%d,\"Gnarlroot\",0x10a48,0x0,Player-1403-0A6F33C2,"
     "\"Çağla-Kazzak\",0x511,0x0,Creature-0-4255-2549-7-209333-000037B1C4,0000000000000000,%d,98431200,0,0,5043,0,1,0,"
     "0,0,2012.31,-1507.02,2232,4.1182,73,%d,%d,-1,1,0,0,0,nil,nil,nil"},
    {40,
     "SPELL_ENERGIZE,Player-1403-0A6F33C2,\"Çağla-Kazzak\",0x511,0x0,Player-1403-0A6F33C2,\"Çağla-Kazzak\",0x511,"
     "0x0,%d,\"Heart Strike\",0x1,Player-1403-0A6F33C2,0000000000000000,%d,812340,5012,9043,7011,0,6,%d,1250,0,"
     "2010.11,-1511.90,2232,1.0021,489,%d.0000,0.0000,6,1250"},
    {3,
     "UNIT_DIED,0000000000000000,nil,0x80000000,0x80000000,Creature-0-4255-2549-7-210231-0000%d,\"Tainted "
     "Lasher\",0xa48,0x0,0"},
    {1,
     "PARTY_KILL,Player-1403-09B21E01,\"Thörgrim-Kazzak\",0x514,0x0,Creature-0-4255-2549-7-210231-0000%d,\"Tainted "
     "Lasher\",0xa48,0x0,0"},
};

constexpr int LinesPerBoss = 40'000;

class LogGenerator {
public:
    QByteArray nextLine()
    {
        m_milliseconds += static_cast<qint64>(m_random() % 8);
        const auto second = m_milliseconds / 1000;
        auto line = QString::asprintf("1/27/2024 %02d:%02d:%02d.%03d  ", static_cast<int>(second / 3600 % 24),
                                      static_cast<int>(second / 60 % 60), static_cast<int>(second % 60),
                                      static_cast<int>(m_milliseconds % 1000))
                        .toUtf8();
        if (++m_lines % LinesPerBoss == 0) {
            return line + "ENCOUNTER_END,2820,\"Gnarlroot\",15,20,1,185523\r\n";
        }
        QByteArray text = LineTemplates[static_cast<std::size_t>(m_templateIndex(m_random))].text;
        for (auto index = text.indexOf("%d"); index >= 0; index = text.indexOf("%d", index)) {
            text.replace(index, 2, QByteArray::number(static_cast<uint>(m_random() % 1'000'000)));
        }
        return line + text + "\r\n";
    }

private:
    static std::discrete_distribution<int> templateDistribution()
    {
        std::vector<double> weights;
        for (const auto& each : LineTemplates) {
            weights.push_back(each.weight);
        }
        return {weights.begin(), weights.end()};
    }

    std::mt19937 m_random{7};
    std::discrete_distribution<int> m_templateIndex = templateDistribution();
    qint64 m_milliseconds = 0;
    int m_lines = 0;
};

void writeLog(const fs::path& file, std::uint64_t bytes)
{
    std::ofstream stream(file, std::ios::binary);
    LogGenerator generator;
    for (std::uint64_t written = 0; written < bytes;) {
        const auto line = generator.nextLine();
        stream.write(line.data(), line.size());
        written += static_cast<std::uint64_t>(line.size());
    }
}

template <typename Work> double secondsFor(Work work)
{
    const auto start = HostClock::now();
    work();
    return toSeconds(HostClock::now() - start);
}

/// Returns the number of matching lines, for comparison with grep's.
int readLikeWatcher(LogFile log)
{
    int lines = 0;
    WowFights fights;
    LogTail tail([&](QByteArrayView line) {
        ++lines;
        if (const auto event = logEvent(line)) {
            fights.take(*event, 0);
        }
    });
    // Follows the log as an empty file first, so that all of it counts as new.
    const auto size = std::exchange(log.size, 0);
    tail.follow(log, 0);
    log.size = size;
    for (std::uint64_t read = 0; read < size; read += LogTail::MaxBytesPerRead) {
        tail.follow(log, 0);
    }
    return lines;
}

/// Returns the number of matching lines. The output is a file: grep stops at the first match if it writes to /dev/null.
int grep(const fs::path& file)
{
    const auto output = file.parent_path() / "output";
    std::string path = file.string();
    std::vector<std::string> words{"grep", "-F", "-c"};
    for (const auto word : LogEventWords) {
        words.insert(words.end(), {"-e", std::string(word)});
    }
    words.push_back(path);
    std::vector<char*> arguments(words.size() + 1);
    std::transform(words.begin(), words.end(), arguments.begin(), [](auto& word) { return word.data(); });
    // The C locale makes grep compare bytes, which is faster.
    std::string locale = "LC_ALL=C";
    char* const environment[]{locale.data(), nullptr};
    posix_spawn_file_actions_t actions{};
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, output.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    pid_t process = 0;
    int status = 1;
    if (posix_spawnp(&process, "grep", &actions, nullptr, arguments.data(), environment) == 0) {
        waitpid(process, &status, 0);
    }
    posix_spawn_file_actions_destroy(&actions);
    int lines = 0;
    std::ifstream(output) >> lines;
    return status == 0 ? lines : -1;
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

} // namespace

int main(int count, char** arguments)
{
    const QCoreApplication application(count, arguments);
    QCommandLineParser parser;
    parser.addHelpOption();
    const QCommandLineOption megabytes(QStringLiteral("megabytes"), QStringLiteral("Size of the generated log"),
                                       QStringLiteral("N"), QStringLiteral("500"));
    const QCommandLineOption runs(QStringLiteral("runs"), QStringLiteral("Number of runs of each program"),
                                  QStringLiteral("N"), QStringLiteral("5"));
    const QCommandLineOption log(QStringLiteral("log"), QStringLiteral("Existing log to read instead"),
                                 QStringLiteral("FILE"));
    parser.addOptions({megabytes, runs, log});
    parser.process(application);

    const auto folder = fs::path(QDir::tempPath().toStdString()) / "quelto-log-throughput";
    fs::create_directories(folder);
    const auto file = folder / "WoWCombatLog.txt";
    if (parser.isSet(log)) {
        fs::copy_file(parser.value(log).toStdString(), file, fs::copy_options::overwrite_existing);
    } else {
        writeLog(file, parser.value(megabytes).toULongLong() * 1'000'000);
    }
    const auto found = newestLog({folder});
    const auto size = static_cast<double>(found->size) / 1e6;

    const int lines = grep(file);
    if (lines <= 0 || readLikeWatcher(*found) != lines) {
        std::fputs("Quelto and grep do not match the same lines\n", stderr);
        return 1;
    }
    std::vector<double> ours;
    std::vector<double> theirs;
    std::vector<double> ratios;
    for (int i = 0; i < parser.value(runs).toInt(); ++i) {
        ours.push_back(size / secondsFor([&] { readLikeWatcher(*found); }));
        theirs.push_back(size / secondsFor([&] { grep(file); }));
        ratios.push_back(ours.back() / theirs.back());
    }
    std::printf("quelto %.0f MB/s, grep %.0f MB/s, ratio %.2f (%.0f MB, %d matching lines)\n", median(ours),
                median(theirs), median(ratios), size, lines);
    fs::remove_all(folder);
    return 0;
}
