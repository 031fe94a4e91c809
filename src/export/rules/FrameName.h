// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace quelto {

/// The longest name that common file systems take. Units: bytes.
constexpr qsizetype MaxFileNameBytes = 255;

/// The file name of a picture of a clip: "STEM 0m12.345s.png", and "STEM 0m12.345s 2.png" and so on for further
/// attempts. A name of more than `maxBytes` is shortened at the end of the stem, never within a character.
///
/// Names are as decodeFileName returns them. Units: seconds.
QString frameFileName(const QString& clipFileName, double seconds, int attempt = 1,
                      qsizetype maxBytes = MaxFileNameBytes);

} // namespace quelto
