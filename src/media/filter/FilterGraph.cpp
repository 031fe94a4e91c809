// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/filter/FilterGraph.h"

#include "media/ffmpeg/FfmpegError.h"

extern "C" {
#include <libavutil/mem.h>
#include <libavutil/opt.h>
}

#include <new>

namespace quelto {

namespace {

/// A game may run meanwhile.
constexpr int MaxThreads = 2;

template <typename T> T* allocated(T* pointer)
{
    if (pointer == nullptr) {
        throw std::bad_alloc();
    }
    return pointer;
}

std::string inputLabel(std::size_t index)
{
    return index == 0 ? "in" : "in" + std::to_string(index);
}

void append(FilterEnds& list, AVFilterContext* filter, const std::string& label)
{
    auto* end = allocated(FilterLibrary::get().allocEnds());
    end->name = av_strdup(label.c_str());
    end->filter_ctx = filter;
    end->next = list.release();
    list.reset(end);
}

/// The parser takes the ends that it connects out of the lists, and the caller frees the rest.
int parse(AVFilterGraph* graph, const std::string& description, FilterEnds& inputs, FilterEnds& outputs)
{
    auto* openOutputs = inputs.release();
    auto* openInputs = outputs.release();
    const int status = FilterLibrary::get().parse(graph, description.c_str(), &openInputs, &openOutputs, nullptr);
    inputs.reset(openOutputs);
    outputs.reset(openInputs);
    return status;
}

} // namespace

FilterGraph::FilterGraph(std::span<const AVFrame* const> inputs, const std::string& description)
{
    ffmpeg::disableLogging();
    m_graph.reset(allocated(FilterLibrary::get().allocGraph()));
    m_graph->nb_threads = MaxThreads;
    // For conversions that FFmpeg inserts between two filters.
    av_opt_set(m_graph.get(), "scale_sws_opts", "flags=bicubic+accurate_rnd+full_chroma_int", 0);
    for (std::size_t i = 0; i < inputs.size(); ++i) {
        m_inputs.push_back(addInput(*inputs[i], inputLabel(i)));
    }
    ffmpeg::checked(FilterLibrary::get().createFilter(&m_output, FilterLibrary::get().getByName("buffersink"), "out",
                                                      nullptr, nullptr, m_graph.get()));
    connect(description);
    ffmpeg::checked(FilterLibrary::get().config(m_graph.get(), nullptr));
}

FilterGraph::FilterGraph(const AVFrame& input, const std::string& description)
    : FilterGraph(std::array{&input}, description)
{
}

AVFilterContext* FilterGraph::addInput(const AVFrame& frame, const std::string& label)
{
    auto* filter = allocated(
        FilterLibrary::get().allocFilter(m_graph.get(), FilterLibrary::get().getByName("buffer"), label.c_str()));
    const std::unique_ptr<AVBufferSrcParameters, decltype(&av_free)> parameters(
        allocated(FilterLibrary::get().allocParameters()), &av_free);
    parameters->format = frame.format;
    parameters->width = frame.width;
    parameters->height = frame.height;
    parameters->sample_aspect_ratio = frame.sample_aspect_ratio;
    parameters->time_base = frame.time_base.num > 0 ? frame.time_base : av_get_time_base_q();
    // For frames in memory of the GPU. The graph takes a reference of its own.
    parameters->hw_frames_ctx = frame.hw_frames_ctx;
#if LIBAVFILTER_VERSION_MAJOR >= 10
    parameters->color_space = frame.colorspace;
    parameters->color_range = frame.color_range;
#endif
    ffmpeg::checked(FilterLibrary::get().setParameters(filter, parameters.get()));
    ffmpeg::checked(FilterLibrary::get().initFilter(filter, nullptr));
    return filter;
}

void FilterGraph::connect(const std::string& description)
{
    FilterEnds inputs;
    for (std::size_t i = m_inputs.size(); i > 0; --i) {
        append(inputs, m_inputs[i - 1], inputLabel(i - 1));
    }
    FilterEnds outputs;
    append(outputs, m_output, "out");
    ffmpeg::checked(parse(m_graph.get(), description, inputs, outputs));
}

void FilterGraph::push(const AVFrame& frame, std::size_t input)
{
    // The function only reads a frame whose reference it keeps, but its parameter is not const.
    ffmpeg::checked(
        FilterLibrary::get().addFrame(m_inputs.at(input), const_cast<AVFrame*>(&frame), AV_BUFFERSRC_FLAG_KEEP_REF));
}

ffmpeg::Frame FilterGraph::tryPull()
{
    auto frame = ffmpeg::makeFrame();
    const int status = FilterLibrary::get().getFrame(m_output, frame.get());
    if (status == AVERROR(EAGAIN) || status == AVERROR_EOF) {
        return nullptr;
    }
    ffmpeg::checked(status);
    return frame;
}

bool hasFilter(const char* name)
{
    return FilterLibrary::get().getByName(name) != nullptr;
}

} // namespace quelto
