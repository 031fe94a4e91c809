// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/startup/CommandLine.h"

#include "base/language/T.h"

namespace quelto {

namespace {

constexpr int Failure = 1;
constexpr int WrongUsage = 2;

enum class OptionValue { none, next };

struct QtOption {
    const char* name;
    OptionValue value;
};

// QApplication takes these, with one or two dashes. A value may also follow the name after "=".
constexpr std::array QtOptions{
    QtOption{"display", OptionValue::next},       QtOption{"dograb", OptionValue::none},
    QtOption{"geometry", OptionValue::next},      QtOption{"icon", OptionValue::next},
    QtOption{"name", OptionValue::next},          QtOption{"nograb", OptionValue::none},
    QtOption{"platform", OptionValue::next},      QtOption{"platformpluginpath", OptionValue::next},
    QtOption{"platformtheme", OptionValue::next}, QtOption{"plugin", OptionValue::next},
    QtOption{"qmljsdebugger", OptionValue::none}, QtOption{"qwindowgeometry", OptionValue::next},
    QtOption{"qwindowicon", OptionValue::next},   QtOption{"qwindowtitle", OptionValue::next},
    QtOption{"reverse", OptionValue::none},       QtOption{"session", OptionValue::next},
    QtOption{"style", OptionValue::next},         QtOption{"stylesheet", OptionValue::next},
    QtOption{"title", OptionValue::next},         QtOption{"widgetcount", OptionValue::none},
};

using SaveClip = std::function<std::optional<QString>()>;

struct OwnOption {
    const char* shortName;
    const char* longName;
    /// The key of its description.
    const char* description;
    CommandLineAnswer (*answer)(const SaveClip&);
};

CommandLineAnswer version(const SaveClip& saveClip);
CommandLineAnswer help(const SaveClip& saveClip);
CommandLineAnswer requestClip(const SaveClip& saveClip);

constexpr std::array OwnOptions{
    OwnOption{"-s", "--save-clip", "Çalışan Quelto'ye klip kaydettirir", requestClip},
    OwnOption{"-h", "--help", "Bu yardımı gösterir", help},
    OwnOption{"-v", "--version", "Sürümü gösterir", version},
};

CommandLineAnswer requestClip(const SaveClip& saveClip)
{
    const auto failure = saveClip();
    return failure ? CommandLineAnswer{.text = *failure + u'\n', .exitCode = Failure} : CommandLineAnswer{};
}

CommandLineAnswer version(const SaveClip& /*saveClip*/)
{
    return {.text = QStringLiteral("Quelto " QUELTO_VERSION "\n")};
}

CommandLineAnswer help(const SaveClip& /*saveClip*/)
{
    auto text = T("Kullanım: {0}", QStringLiteral("quelto")) + QStringLiteral(" [-s | -h | -v]\n\n") +
        T("Linux için anlık tekrar kaydedici. GNU GPL 3 veya sonraki sürümüyle özgür yazılımdır.") +
        QStringLiteral("\n\n");
    for (const auto& option : OwnOptions) {
        text += QStringLiteral("  %1, %2  %3\n")
                    .arg(QLatin1String(option.shortName), QString(QLatin1String(option.longName)).leftJustified(11),
                         T(option.description));
    }
    return {.text = text + u'\n' + T("Quelto zaten çalışıyorsa onun penceresini gösterir.") + u'\n'};
}

const QtOption* tryFindQtOption(const QString& argument)
{
    const auto dashes = argument.startsWith(QStringLiteral("--")) ? 2 : 1;
    const auto name = argument.mid(dashes).section(u'=', 0, 0);
    const auto* found =
        std::ranges::find_if(QtOptions, [&](const QtOption& option) { return name == QLatin1String(option.name); });
    return argument.startsWith(u'-') && found != QtOptions.end() ? found : nullptr;
}

} // namespace

std::optional<CommandLineAnswer> answerCommandLine(const QStringList& arguments, const SaveClip& saveClip)
{
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const auto& argument = arguments[i];
        const auto* own = std::ranges::find_if(OwnOptions, [&](const OwnOption& option) {
            return argument == QLatin1String(option.shortName) || argument == QLatin1String(option.longName);
        });
        if (own != OwnOptions.end()) {
            return own->answer(saveClip);
        }
        const auto* qt = tryFindQtOption(argument);
        if (qt == nullptr) {
            return CommandLineAnswer{
                .text =
                    T("Bilinmeyen seçenek: {0}. Seçenekler: {1}", argument, QStringLiteral("quelto --help")) + u'\n',
                .exitCode = WrongUsage};
        }
        if (qt->value == OptionValue::next && !argument.contains(u'=')) {
            ++i;
        }
    }
    return std::nullopt;
}

} // namespace quelto
