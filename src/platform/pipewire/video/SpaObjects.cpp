// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/pipewire/video/SpaObjects.h"

namespace quelto::pipewire {

namespace {

constexpr std::size_t MaxObjectBytes = 16 * 1024;

} // namespace

void SpaObjects::begin(std::uint32_t type, std::uint32_t id)
{
    auto& memory = m_memory.emplace_back(MaxObjectBytes / sizeof(std::uint64_t));
    spa_pod_builder_init(&m_builder, memory.data(), MaxObjectBytes);
    spa_pod_builder_push_object(&m_builder, &m_object, type, id);
}

void SpaObjects::end()
{
    // Null if the memory was too small.
    if (const void* object = spa_pod_builder_pop(&m_builder, &m_object)) {
        m_objects.push_back(static_cast<const spa_pod*>(object));
    }
}

void SpaObjects::addId(std::uint32_t key, std::uint32_t value)
{
    spa_pod_builder_prop(&m_builder, key, 0);
    spa_pod_builder_id(&m_builder, value);
}

void SpaObjects::addInt(std::uint32_t key, std::int32_t value)
{
    spa_pod_builder_prop(&m_builder, key, 0);
    spa_pod_builder_int(&m_builder, value);
}

void SpaObjects::addIds(std::uint32_t key, std::span<const std::uint32_t> values)
{
    beginChoice(key, 0, SPA_CHOICE_Enum);
    // The preferred value comes before the list of all.
    spa_pod_builder_id(&m_builder, values.front());
    for (const std::uint32_t value : values) {
        spa_pod_builder_id(&m_builder, value);
    }
    endChoice();
}

void SpaObjects::addLongs(std::uint32_t key, std::uint32_t flags, std::span<const std::uint64_t> values)
{
    beginChoice(key, flags, SPA_CHOICE_Enum);
    spa_pod_builder_long(&m_builder, static_cast<std::int64_t>(values.front()));
    for (const std::uint64_t value : values) {
        spa_pod_builder_long(&m_builder, static_cast<std::int64_t>(value));
    }
    endChoice();
}

void SpaObjects::addRange(std::uint32_t key, const SpaRange<std::int32_t>& range)
{
    beginChoice(key, 0, SPA_CHOICE_Range);
    for (const std::int32_t value : {range.preferred, range.least, range.most}) {
        spa_pod_builder_int(&m_builder, value);
    }
    endChoice();
}

void SpaObjects::addRange(std::uint32_t key, const SpaRange<spa_rectangle>& range)
{
    beginChoice(key, 0, SPA_CHOICE_Range);
    for (const spa_rectangle& value : {range.preferred, range.least, range.most}) {
        spa_pod_builder_rectangle(&m_builder, value.width, value.height);
    }
    endChoice();
}

void SpaObjects::addRange(std::uint32_t key, const SpaRange<spa_fraction>& range)
{
    beginChoice(key, 0, SPA_CHOICE_Range);
    for (const spa_fraction& value : {range.preferred, range.least, range.most}) {
        spa_pod_builder_fraction(&m_builder, value.num, value.denom);
    }
    endChoice();
}

void SpaObjects::addFlags(std::uint32_t key, std::int32_t bits)
{
    beginChoice(key, 0, SPA_CHOICE_Flags);
    spa_pod_builder_int(&m_builder, bits);
    endChoice();
}

void SpaObjects::beginChoice(std::uint32_t key, std::uint32_t flags, std::uint32_t kind)
{
    spa_pod_builder_prop(&m_builder, key, flags);
    spa_pod_builder_push_choice(&m_builder, &m_choice, kind, 0);
}

void SpaObjects::endChoice()
{
    spa_pod_builder_pop(&m_builder, &m_choice);
}

} // namespace quelto::pipewire
