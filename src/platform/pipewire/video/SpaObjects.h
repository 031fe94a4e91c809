// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <spa/pod/builder.h>

#include <cstdint>
#include <span>
#include <vector>

namespace quelto::pipewire {

/// The bounds of a value and what to choose if the other side does not care.
template <typename Value> struct SpaRange {
    Value preferred;
    Value least;
    Value most;
};

/// Builds a list of SPA objects, as streams take them for their formats and buffers. Owns their memory.
///
/// Thread: one at a time.
class SpaObjects {
public:
    SpaObjects() = default;
    SpaObjects(const SpaObjects&) = delete;
    SpaObjects& operator=(const SpaObjects&) = delete;

    /// The properties that are added next belong to this object, until end().
    void begin(std::uint32_t type, std::uint32_t id);
    /// Leaves out an object that is too large: 16 KiB.
    void end();

    void addId(std::uint32_t key, std::uint32_t value);
    void addInt(std::uint32_t key, std::int32_t value);
    /// One of the values. The first is preferred.
    void addIds(std::uint32_t key, std::span<const std::uint32_t> values);
    /// One of the values. The first is preferred. Flags: SPA_POD_PROP_FLAG_ values.
    void addLongs(std::uint32_t key, std::uint32_t flags, std::span<const std::uint64_t> values);
    void addRange(std::uint32_t key, const SpaRange<std::int32_t>& range);
    void addRange(std::uint32_t key, const SpaRange<spa_rectangle>& range);
    void addRange(std::uint32_t key, const SpaRange<spa_fraction>& range);
    /// Any of the bits.
    void addFlags(std::uint32_t key, std::int32_t bits);

    /// Valid until the next change and as long as this object.
    std::span<const spa_pod*> all() noexcept { return m_objects; }

private:
    void beginChoice(std::uint32_t key, std::uint32_t flags, std::uint32_t kind);
    void endChoice();

    /// 64-bit elements, because objects are aligned to them. The memory of an object stays in its place.
    std::vector<std::vector<std::uint64_t>> m_memory;
    std::vector<const spa_pod*> m_objects;
    spa_pod_builder m_builder = {};
    spa_pod_frame m_object = {};
    spa_pod_frame m_choice = {};
};

} // namespace quelto::pipewire
