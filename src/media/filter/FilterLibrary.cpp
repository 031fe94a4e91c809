// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/filter/FilterLibrary.h"

#include "media/ffmpeg/FfmpegError.h"

#include <QByteArray>

#include <dlfcn.h>

namespace quelto {

namespace {

/// Stays loaded until the program ends. Null if it is not installed.
void* openLibrary()
{
    // The version that the declarations are from.
    const auto name = "libavfilter.so." + QByteArray::number(LIBAVFILTER_VERSION_MAJOR);
    return ::dlopen(name.constData(), RTLD_NOW | RTLD_LOCAL);
}

FilterLibrary load()
{
    auto* const library = openLibrary();
    const auto find = [library](auto& function, const char* name) {
        void* const symbol = library != nullptr ? ::dlsym(library, name) : nullptr;
        if (symbol == nullptr) {
            throw ffmpeg::FfmpegError(AVERROR_FILTER_NOT_FOUND);
        }
        function = reinterpret_cast<std::remove_reference_t<decltype(function)>>(symbol);
    };
    FilterLibrary functions;
    find(functions.getByName, "avfilter_get_by_name");
    find(functions.allocGraph, "avfilter_graph_alloc");
    find(functions.allocFilter, "avfilter_graph_alloc_filter");
    find(functions.config, "avfilter_graph_config");
    find(functions.createFilter, "avfilter_graph_create_filter");
    find(functions.freeGraph, "avfilter_graph_free");
    find(functions.parse, "avfilter_graph_parse_ptr");
    find(functions.initFilter, "avfilter_init_str");
    find(functions.allocEnds, "avfilter_inout_alloc");
    find(functions.freeEnds, "avfilter_inout_free");
    find(functions.getFrame, "av_buffersink_get_frame");
    find(functions.addFrame, "av_buffersrc_add_frame_flags");
    find(functions.allocParameters, "av_buffersrc_parameters_alloc");
    find(functions.setParameters, "av_buffersrc_parameters_set");
    return functions;
}

} // namespace

const FilterLibrary& FilterLibrary::get()
{
    static const auto Functions = load();
    return Functions;
}

} // namespace quelto
