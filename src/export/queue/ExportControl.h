// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <exception>
#include <functional>
#include <stop_token>

namespace quelto {

/// Thrown by an export that was asked to stop. This is not a failure, so no message is shown.
class ExportStopped : public std::exception {
public:
    const char* what() const noexcept override { return "the export was stopped"; }
};

/// The connection of a running export with its caller.
///
/// An export that notices the stop request deletes its partial file and throws ExportStopped. It looks at the request
/// at least once for each picture, because the program waits only a few seconds for it when it quits.
struct ExportControl {
    std::stop_token stop;
    /// Takes values from 0 to 1. Thread: any.
    std::function<void(double)> progress;

    void throwIfStopped() const
    {
        if (stop.stop_requested()) {
            throw ExportStopped();
        }
    }
};

} // namespace quelto
