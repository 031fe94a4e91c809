// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/ffmpeg/Handles.h"
#include "media/filter/FilterLibrary.h"

namespace quelto {

/// A graph of FFmpeg's video filters with one output. All frames of an input must have the size, format and colour of
/// the frame that the graph was built with; a change needs a new graph.
///
/// Errors: ffmpeg::FfmpegError, std::bad_alloc.
class FilterGraph {
public:
    /// The description is FFmpeg's text form of a graph. Two inputs have the labels [in] and [in1]; labels can be left
    /// out for a single input and for the output. Takes only the properties of the frames. Those without a time base
    /// get microseconds.
    FilterGraph(std::span<const AVFrame* const> inputs, const std::string& description);
    FilterGraph(const AVFrame& input, const std::string& description);

    /// The graph takes a reference of its own and never changes the picture.
    void push(const AVFrame& frame, std::size_t input = 0);
    /// Null if the graph needs more input.
    ffmpeg::Frame tryPull();

private:
    AVFilterContext* addInput(const AVFrame& frame, const std::string& label);
    void connect(const std::string& description);

    FilterGraphHandle m_graph;
    std::vector<AVFilterContext*> m_inputs;
    AVFilterContext* m_output = nullptr;
};

/// Whether the installed FFmpeg has the filter.
bool hasFilter(const char* name);

} // namespace quelto
