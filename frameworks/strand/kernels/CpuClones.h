#pragma once
// Builds a function for AVX2 and for the baseline, the choice made when the program loads. That
// choice runs before ThreadSanitizer has started, which it does not survive, so a build under
// ThreadSanitizer keeps the baseline only.

#if defined(__SANITIZE_THREAD__)
#define ORV_AVX2_CLONES
#else
#define ORV_AVX2_CLONES __attribute__((target_clones("avx2", "default")))
#endif
