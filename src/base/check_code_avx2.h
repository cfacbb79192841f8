#pragma once

#include <cstddef>
#include <cstdint>

namespace pallomir {

/// XORs `blocks` blocks of 32 bytes into the 32 at `folded`; for machines that have HasAvx2().
void FoldByAvx2(const std::uint8_t* bytes, std::size_t blocks, std::uint8_t* folded);

}  // namespace pallomir
