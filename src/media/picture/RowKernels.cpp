// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/picture/RowKernels.h"

#include "media/picture/RowArithmetic.h"
#include "media/picture/RowKernelsPortable.h"

namespace quelto {

namespace portable {

using namespace arithmetic;

namespace {

std::uint8_t luma(const std::uint8_t* pixel)
{
    const int sum = LumaBlue * (pixel[0] - 128) + LumaGreen * (pixel[1] - 128) + LumaRed * (pixel[2] - 128);
    return static_cast<std::uint8_t>((sum + LumaBias) >> 8);
}

std::uint8_t chroma(int sum)
{
    return static_cast<std::uint8_t>(((sum + ChromaRounding) * ChromaFactor >> 16) + ChromaZero);
}

int mean(const PixelRows& pixels, int column, int channel)
{
    const auto left = static_cast<std::size_t>(column) * 4 + static_cast<std::size_t>(channel);
    return average(average(pixels.top[left], pixels.bottom[left]),
                   average(pixels.top[left + 4], pixels.bottom[left + 4]));
}

} // namespace

void convertRows(const PixelRows& pixels, const Nv12Rows& planes, int from, int width)
{
    for (int column = from; column < width; ++column) {
        planes.lumaTop[column] = luma(pixels.top + column * 4);
        planes.lumaBottom[column] = luma(pixels.bottom + column * 4);
    }
    for (int column = from; column + 1 < width; column += 2) {
        const int blue = mean(pixels, column, 0);
        const int green = mean(pixels, column, 1);
        const int red = mean(pixels, column, 2);
        planes.chroma[column] = chroma(CbBlue * blue + CbGreen * green + CbRed * red);
        planes.chroma[column + 1] = chroma(CrBlue * blue + CrGreen * green + CrRed * red);
    }
}

void halveRows(const PixelRows& pixels, std::uint8_t* halved, int from, int width)
{
    for (int column = from; column < width; ++column) {
        const auto* top = pixels.top + column * 8;
        const auto* bottom = pixels.bottom + column * 8;
        for (int channel = 0; channel < 4; ++channel) {
            const int sum = top[channel] + top[channel + 4] + bottom[channel] + bottom[channel + 4];
            halved[column * 4 + channel] = static_cast<std::uint8_t>((sum + 2) >> 2);
        }
    }
}

void blendRows(std::span<const std::uint8_t* const> rows, const std::uint16_t* weights, std::uint16_t* blended,
               int from, int bytes)
{
    for (int index = from; index < bytes; ++index) {
        std::uint32_t sum = 0;
        for (std::size_t row = 0; row < rows.size(); ++row) {
            sum += (static_cast<std::uint32_t>(rows[row][index]) << 8) * weights[row] >> 16;
        }
        blended[index] = static_cast<std::uint16_t>(sum >> 1);
    }
}

void resampleRow(const std::uint16_t* blended, const ColumnPlan& plan, std::uint8_t* pixels, int from, int width)
{
    for (int column = from; column < width; ++column) {
        const auto* source = blended + static_cast<std::ptrdiff_t>(plan.first[static_cast<std::size_t>(column)]) * 4;
        for (int channel = 0; channel < 4; ++channel) {
            int sum = 1 << (ResampleShift - 1);
            for (int pair = 0; pair < plan.pairs; ++pair) {
                const auto& weights = plan.weightsOf(column, pair);
                sum += source[pair * 8 + channel] * weights[0] + source[pair * 8 + 4 + channel] * weights[1];
            }
            pixels[column * 4 + channel] = static_cast<std::uint8_t>(sum >> ResampleShift);
        }
    }
}

} // namespace portable

namespace {

constexpr RowKernels PortableKernels{
    .convertRows = [](const PixelRows& pixels, const Nv12Rows& planes,
                      int width) { portable::convertRows(pixels, planes, 0, width); },
    .halveRows = [](const PixelRows& pixels, std::uint8_t* halved,
                    int width) { portable::halveRows(pixels, halved, 0, width); },
    .blendRows = [](std::span<const std::uint8_t* const> rows, const std::uint16_t* weights, std::uint16_t* blended,
                    int bytes) { portable::blendRows(rows, weights, blended, 0, bytes); },
    .resampleRow = [](const std::uint16_t* blended, const ColumnPlan& plan, std::uint8_t* pixels,
                      int width) { portable::resampleRow(blended, plan, pixels, 0, width); },
};

const RowKernels* vectorKernels(InstructionSet instructionSet) noexcept
{
    switch (instructionSet) {
    case InstructionSet::avx2:
        return avx2Kernels();
    case InstructionSet::ssse3:
        return ssse3Kernels();
    case InstructionSet::portable:
        break;
    }
    return nullptr;
}

} // namespace

bool isAvailable(InstructionSet instructionSet) noexcept
{
    return instructionSet == InstructionSet::portable || vectorKernels(instructionSet) != nullptr;
}

InstructionSet bestInstructionSet() noexcept
{
    for (const auto candidate : {InstructionSet::avx2, InstructionSet::ssse3}) {
        if (isAvailable(candidate)) {
            return candidate;
        }
    }
    return InstructionSet::portable;
}

const RowKernels& rowKernels(InstructionSet instructionSet) noexcept
{
    const auto* kernels = vectorKernels(instructionSet);
    return kernels ? *kernels : PortableKernels;
}

} // namespace quelto
