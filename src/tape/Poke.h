#pragma once

#include <cstdint>

namespace cintal {

// One memory change of a trainer. Model only: trainers on a tape stay as the
// raw bytes of their custom info block.
struct Poke {
    double IdPok = 0;
    std::uint8_t Bank = 0;
    double Address = 0;
    std::uint8_t Value = 0;
    std::uint8_t OriginalValue = 0;
};

} // namespace cintal
