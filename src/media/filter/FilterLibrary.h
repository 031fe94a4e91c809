// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

extern "C" {
#include <libavfilter/avfilter.h>
#include <libavfilter/buffersink.h>
#include <libavfilter/buffersrc.h>
}

#include <memory>

namespace quelto {

/// libavfilter, which is loaded when it is first needed: it loads about thirty more libraries, which would delay every
/// start of the program.
///
/// Thread: any.
struct FilterLibrary {
    /// Errors: ffmpeg::FfmpegError if the library is not installed.
    static const FilterLibrary& get();

    decltype(&avfilter_get_by_name) getByName = nullptr;
    decltype(&avfilter_graph_alloc) allocGraph = nullptr;
    decltype(&avfilter_graph_alloc_filter) allocFilter = nullptr;
    decltype(&avfilter_graph_config) config = nullptr;
    decltype(&avfilter_graph_create_filter) createFilter = nullptr;
    decltype(&avfilter_graph_free) freeGraph = nullptr;
    decltype(&avfilter_graph_parse_ptr) parse = nullptr;
    decltype(&avfilter_init_str) initFilter = nullptr;
    decltype(&avfilter_inout_alloc) allocEnds = nullptr;
    decltype(&avfilter_inout_free) freeEnds = nullptr;
    decltype(&av_buffersink_get_frame) getFrame = nullptr;
    decltype(&av_buffersrc_add_frame_flags) addFrame = nullptr;
    decltype(&av_buffersrc_parameters_alloc) allocParameters = nullptr;
    decltype(&av_buffersrc_parameters_set) setParameters = nullptr;
};

struct FreeFilters {
    void operator()(AVFilterGraph* graph) const noexcept { FilterLibrary::get().freeGraph(&graph); }
    void operator()(AVFilterInOut* ends) const noexcept { FilterLibrary::get().freeEnds(&ends); }
};

using FilterGraphHandle = std::unique_ptr<AVFilterGraph, FreeFilters>;
using FilterEnds = std::unique_ptr<AVFilterInOut, FreeFilters>;

} // namespace quelto
