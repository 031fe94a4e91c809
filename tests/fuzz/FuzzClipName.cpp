// SPDX-License-Identifier: GPL-3.0-or-later
// Requires that parsing a generated clip name returns its parts, and that any name can be parsed.
#include "library/naming/Clip.h"
#include "library/naming/ClipName.h"

#include "tests/fuzz/Require.h"

namespace {

using namespace quelto;
using namespace quelto::fuzz;

void parseAnyName(const QString& name)
{
    const Clip clip(QStringLiteral("/clips/") + name);
    clip.displayTitle();
    clip.hasDefaultTitle();
    clip.isTall();
    require(clip.autoTier.has_value() == clip.autoLabel.has_value());
    require(!clip.autoLabel || !clip.autoLabel->isEmpty());
}

bool isControl(QChar each)
{
    return each.category() == QChar::Other_Control;
}

/// What a name keeps of a part of it.
QString withoutControls(QString text)
{
    return text.removeIf(isControl);
}

void requireRoundTrip(const QString& writtenGame, const QString& writtenLabel)
{
    const auto game = withoutControls(writtenGame);
    const auto label = withoutControls(writtenLabel);
    const QDateTime date({2026, 3, 1}, {20, 15, 7});
    const auto name =
        clipFileName({.game = writtenGame, .date = date, .suffix = QStringLiteral("[EFSANE 95] ") + writtenLabel}, 2);
    require(name.toUtf8().size() <= 249);
    require(!name.contains(u'/') && !name.contains(u'\0') && name.endsWith(QStringLiteral(".mp4")));
    require(!name.startsWith(u'.') && std::ranges::none_of(name, isControl));

    const Clip clip(QStringLiteral("/clips/") + name);
    const auto separator = QStringLiteral(" - ");
    auto beforeDate = game + separator;
    beforeDate.replace(u'/', u'-').replace(u':', u'-');
    const bool isSeparatorUnique = beforeDate.indexOf(separator) == game.size();
    const bool isShort = (game + label).toUtf8().size() <= 200;
    if (isShort && isSeparatorUnique && !label.isEmpty() && !game.startsWith(u'.')) {
        require(clip.hasDefaultTitle());
        require(clip.game.size() == game.size());
        require(clip.autoTier == ClipTier::epic && clip.autoScore == 95);
        require(clip.autoLabel->size() == label.size());
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    // The first line is the game, the second the label.
    auto text = QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    text.remove(QChar(u'\0'));
    parseAnyName(text);
    const auto lines = text.split(u'\n');
    requireRoundTrip(lines[0], lines.value(1));
    return 0;
}
