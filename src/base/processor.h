#pragma once

namespace pallomir {

/// Whether the kernels in the files named _avx2 may be called: they need AVX2 and FMA. Elsewhere the plain
/// form of the same function is used.
inline bool HasAvx2() {
#if defined(__x86_64__)
  return __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma");
#else
  return false;
#endif
}

}  // namespace pallomir
