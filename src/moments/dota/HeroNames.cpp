// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/dota/HeroNames.h"

#include <QHash>
#include <QStringList>

namespace quelto {

namespace {

/// The heroes whose display name differs from the words of the internal name.
const QHash<QString, QString>& specialNames()
{
    static const QHash<QString, QString> names{
        {QStringLiteral("zuus"), QStringLiteral("Zeus")},
        {QStringLiteral("nevermore"), QStringLiteral("Shadow Fiend")},
        {QStringLiteral("obsidian_destroyer"), QStringLiteral("Outworld Destroyer")},
        {QStringLiteral("magnataur"), QStringLiteral("Magnus")},
        {QStringLiteral("furion"), QStringLiteral("Nature's Prophet")},
        {QStringLiteral("wisp"), QStringLiteral("Io")},
        {QStringLiteral("rattletrap"), QStringLiteral("Clockwerk")},
        {QStringLiteral("skeleton_king"), QStringLiteral("Wraith King")},
        {QStringLiteral("shredder"), QStringLiteral("Timbersaw")},
        {QStringLiteral("treant"), QStringLiteral("Treant Protector")},
        {QStringLiteral("drow_ranger"), QStringLiteral("Drow Ranger")},
        {QStringLiteral("storm_spirit"), QStringLiteral("Storm Spirit")},
        {QStringLiteral("crystal_maiden"), QStringLiteral("Crystal Maiden")},
        {QStringLiteral("doom_bringer"), QStringLiteral("Doom")},
        {QStringLiteral("life_stealer"), QStringLiteral("Lifestealer")},
        {QStringLiteral("windrunner"), QStringLiteral("Windranger")},
        {QStringLiteral("queenofpain"), QStringLiteral("Queen of Pain")},
        {QStringLiteral("antimage"), QStringLiteral("Anti-Mage")},
        {QStringLiteral("necrolyte"), QStringLiteral("Necrophos")},
        {QStringLiteral("abyssal_underlord"), QStringLiteral("Underlord")},
        {QStringLiteral("centaur"), QStringLiteral("Centaur Warrunner")},
        {QStringLiteral("vengefulspirit"), QStringLiteral("Vengeful Spirit")},
        {QStringLiteral("keeper_of_the_light"), QStringLiteral("Keeper of the Light")},
        {QStringLiteral("sand_king"), QStringLiteral("Sand King")},
        {QStringLiteral("faceless_void"), QStringLiteral("Faceless Void")},
    };
    return names;
}

} // namespace

QString heroDisplayName(const QString& name)
{
    auto shortName = name;
    shortName.remove(QStringLiteral("npc_dota_hero_"));
    if (const auto special = specialNames().constFind(shortName); special != specialNames().constEnd()) {
        return *special;
    }
    auto words = shortName.split(u'_', Qt::SkipEmptyParts);
    for (auto& word : words) {
        word[0] = word[0].toUpper();
    }
    return words.join(u' ');
}

} // namespace quelto
