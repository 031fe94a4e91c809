// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/AutostartEntry.h"

#include <QFile>
#include <QStandardPaths>

#include <glib.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <memory>
#include <system_error>
#include <unistd.h>

namespace quelto {

namespace {

constexpr auto* Group = G_KEY_FILE_DESKTOP_GROUP;
/// Keys of single desktops for what the key Hidden says to all.
constexpr std::array EnabledKeys{"X-GNOME-Autostart-enabled", "X-MATE-Autostart-enabled"};

struct FreeGlib {
    void operator()(GKeyFile* file) const noexcept { g_key_file_unref(file); }
    void operator()(char* text) const noexcept { g_free(text); }
    void operator()(char** list) const noexcept { g_strfreev(list); }
};
using EntryFile = std::unique_ptr<GKeyFile, FreeGlib>;

/// Returns whether the file has all of the contents.
bool load(const EntryFile& file, const QByteArray& contents)
{
    return g_key_file_load_from_data(
               file.get(), contents.constData(), static_cast<gsize>(contents.size()),
               static_cast<GKeyFileFlags>(G_KEY_FILE_KEEP_COMMENTS | G_KEY_FILE_KEEP_TRANSLATIONS), nullptr) != FALSE &&
        // GLib drops what follows in the line.
        !contents.contains('\0');
}

EntryFile parse(const QByteArray& contents)
{
    EntryFile file(g_key_file_new());
    load(file, contents);
    return file;
}

QByteArray text(const EntryFile& file, const char* key)
{
    return std::unique_ptr<char, FreeGlib>(g_key_file_get_string(file.get(), Group, key, nullptr)).get();
}

bool flag(const EntryFile& file, const char* key, bool fallback)
{
    GError* error = nullptr;
    const bool value = g_key_file_get_boolean(file.get(), Group, key, &error) != FALSE;
    if (error != nullptr) {
        g_error_free(error);
        return fallback;
    }
    return value;
}

void remove(const EntryFile& file, const char* key)
{
    g_key_file_remove_key(file.get(), Group, key, nullptr);
}

/// Whether the list under the key names one of the desktops; nothing without the key.
std::optional<bool> names(const EntryFile& file, const char* key, const QByteArrayList& desktops)
{
    const std::unique_ptr<char*, FreeGlib> list(g_key_file_get_string_list(file.get(), Group, key, nullptr, nullptr));
    if (!list) {
        return std::nullopt;
    }
    return std::ranges::any_of(
        desktops, [&](const QByteArray& desktop) { return g_strv_contains(list.get(), desktop.constData()) != FALSE; });
}

/// The path of a program that the desktop can start; empty if there is none.
QByteArray installed(const QByteArray& program)
{
    if (program.startsWith('/')) {
        return ::access(program.constData(), X_OK) == 0 ? program : QByteArray();
    }
    return QFile::encodeName(QStandardPaths::findExecutable(QFile::decodeName(program)));
}

/// The words of the command; none if it is invalid.
QByteArrayList wordsOf(const QByteArray& command)
{
    char** words = nullptr;
    if (g_shell_parse_argv(command.constData(), nullptr, &words, nullptr) == FALSE) {
        return {};
    }
    const std::unique_ptr<char*, FreeGlib> list(words);
    QByteArrayList result;
    for (char** word = words; *word != nullptr; ++word) {
        result.append(*word);
    }
    return result;
}

bool startsAProgram(const QByteArray& command)
{
    const auto words = wordsOf(command);
    return !words.isEmpty() && !installed(words.first()).isEmpty();
}

/// Whether the command starts this program, by any of its names, also with environment variables.
bool starts(const QByteArray& command, const QByteArray& program)
{
    auto words = wordsOf(command);
    if (!words.isEmpty() && (words.first() == "env" || words.first() == "/usr/bin/env")) {
        do {
            words.removeFirst();
        } while (!words.isEmpty() && words.first().contains('='));
        if (!words.isEmpty()) {
            words.first().replace("%%", "%");
        }
    }
    std::error_code ignored;
    return !words.isEmpty() &&
        std::filesystem::equivalent(installed(words.first()).toStdString(), program.toStdString(), ignored);
}

/// The word as the key Exec has it, before the file's own escapes.
QByteArray quoted(const QByteArray& word)
{
    constexpr QByteArrayView Reserved = " \t\n\"'\\><~|&;$*?#()`";
    QByteArray escaped;
    bool isReserved = false;
    for (const char each : word) {
        isReserved = isReserved || Reserved.indexOf(each) >= 0;
        if (each == '"' || each == '`' || each == '$' || each == '\\') {
            escaped += '\\';
        }
        escaped += each;
        // A single one would begin the code of a file to open.
        if (each == '%') {
            escaped += '%';
        }
    }
    return isReserved ? '"' + escaped + '"' : escaped;
}

QByteArray toBytes(const EntryFile& file)
{
    gsize size = 0;
    const std::unique_ptr<char, FreeGlib> data(g_key_file_to_data(file.get(), &size, nullptr));
    QByteArray bytes(data.get(), static_cast<qsizetype>(size));
    // A key that is added and removed leaves a blank line.
    while (bytes.contains("\n\n\n")) {
        bytes.replace("\n\n\n", "\n\n");
    }
    return bytes;
}

} // namespace

AutostartEntry::AutostartEntry(QByteArray contents, QByteArrayList desktops)
    : m_contents(std::move(contents))
    , m_desktops(std::move(desktops))
{
}

bool AutostartEntry::isEnabled() const
{
    const auto file = parse(m_contents);
    const auto tryExec = text(file, G_KEY_FILE_DESKTOP_KEY_TRY_EXEC);
    return text(file, G_KEY_FILE_DESKTOP_KEY_TYPE) == G_KEY_FILE_DESKTOP_TYPE_APPLICATION &&
        !flag(file, G_KEY_FILE_DESKTOP_KEY_HIDDEN, false) &&
        std::ranges::all_of(EnabledKeys, [&](const char* key) { return flag(file, key, true); }) &&
        names(file, G_KEY_FILE_DESKTOP_KEY_ONLY_SHOW_IN, m_desktops).value_or(true) &&
        !names(file, G_KEY_FILE_DESKTOP_KEY_NOT_SHOW_IN, m_desktops).value_or(false) &&
        (tryExec.isEmpty() || !installed(tryExec).isEmpty()) && startsAProgram(text(file, G_KEY_FILE_DESKTOP_KEY_EXEC));
}

bool AutostartEntry::isDamaged() const
{
    return !load(EntryFile(g_key_file_new()), m_contents);
}

QByteArray AutostartEntry::enabled(const QByteArray& program) const
{
    const auto file = parse(m_contents);
    if (text(file, G_KEY_FILE_DESKTOP_KEY_NAME).isEmpty()) {
        g_key_file_set_string(file.get(), Group, G_KEY_FILE_DESKTOP_KEY_NAME, "Quelto");
        g_key_file_set_string(file.get(), Group, G_KEY_FILE_DESKTOP_KEY_ICON, "app.quelto.Quelto");
    }
    g_key_file_set_string(file.get(), Group, G_KEY_FILE_DESKTOP_KEY_TYPE, G_KEY_FILE_DESKTOP_TYPE_APPLICATION);
    if (!starts(text(file, G_KEY_FILE_DESKTOP_KEY_EXEC), program)) {
        g_key_file_set_string(file.get(), Group, G_KEY_FILE_DESKTOP_KEY_EXEC, commandFor(program).constData());
    }
    remove(file, G_KEY_FILE_DESKTOP_KEY_TRY_EXEC);
    remove(file, G_KEY_FILE_DESKTOP_KEY_HIDDEN);
    std::ranges::for_each(EnabledKeys, [&](const char* key) { remove(file, key); });
    if (!names(file, G_KEY_FILE_DESKTOP_KEY_ONLY_SHOW_IN, m_desktops).value_or(true)) {
        remove(file, G_KEY_FILE_DESKTOP_KEY_ONLY_SHOW_IN);
    }
    if (names(file, G_KEY_FILE_DESKTOP_KEY_NOT_SHOW_IN, m_desktops).value_or(false)) {
        remove(file, G_KEY_FILE_DESKTOP_KEY_NOT_SHOW_IN);
    }
    return toBytes(file);
}

QByteArray AutostartEntry::disabled() const
{
    const auto file = parse(m_contents);
    g_key_file_set_boolean(file.get(), Group, G_KEY_FILE_DESKTOP_KEY_HIDDEN, TRUE);
    return toBytes(file);
}

QByteArray AutostartEntry::commandFor(const QByteArray& program)
{
    // GLib and others look for the program before they replace "%%". In an argument, all replace it.
    return program.contains('%') ? "/usr/bin/env " + quoted(program) : quoted(program);
}

} // namespace quelto
