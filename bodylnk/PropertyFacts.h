// Which properties a factory-new body has, and what they hold.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>

namespace SimulatedBody {

/// The size in bytes; none for an id that the body does not have.
std::optional<std::uint32_t> FactorySize(std::uint32_t id);

/// Writes the contents, which depend on the id alone. `size` is the property's size.
void FillFactoryValue(std::uint32_t id, std::uint32_t size, void* data);

/// Gives each id with its size.
void ForEachFactoryProperty(const std::function<void(std::uint32_t, std::uint32_t)>& visit);

}  // namespace SimulatedBody
