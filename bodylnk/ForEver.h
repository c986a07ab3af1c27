// Static objects that are never destroyed.
#pragma once

namespace SimulatedBody {

/// A process that ends writes its last log line behind the static destruction.
template <class Object>
union ForEver {
    Object object;
    ForEver() : object() {}
    ForEver(const ForEver&) = delete;
    ForEver& operator=(const ForEver&) = delete;
    ~ForEver() {}
};

}  // namespace SimulatedBody
