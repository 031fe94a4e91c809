// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

namespace quelto {

/// What to do with the file of a pass.
enum class ShrinkVerdict {
    /// It is within the limit.
    accept,
    /// It is too large; the next pass has a lower target.
    tryAgain,
    /// It is too large, and there is no further pass. The user gets it all the same.
    acceptTooLarge
};

/// The passes in which a clip is shrunk below an upload limit. An encoder misses its target by a few percent, so the
/// first target is below the limit, and each further one is lower.
struct ShrinkPasses {
    static constexpr int Count = 3;

    /// Units: megabytes of 1,000,000 bytes.
    int limitMB = 0;

    /// Whether a clip of this size can be uploaded as it is.
    bool isSmallEnough(qint64 bytes) const;
    /// Units: bytes. The passes count from 0.
    double targetBytes(int pass) const;
    ShrinkVerdict verdict(int pass, qint64 bytes) const;
};

} // namespace quelto
