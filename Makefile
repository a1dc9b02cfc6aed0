# Front door to the CMake presets. `make demo` and `make test` are what the README asks for.
JOBS ?= $(shell nproc)
OUT ?= $(CURDIR)/out

.PHONY: all build demo test asan tsan release bench fuzz format clean

all: build

build:
	cmake --preset debug
	cmake --build --preset debug -j $(JOBS)

demo: build
	./build/debug/orv-demo --out $(OUT)

test: build
	ctest --preset debug -j $(JOBS)

asan:
	cmake --preset asan
	cmake --build --preset asan -j $(JOBS)
	LSAN_OPTIONS="suppressions=$(CURDIR)/tests/sanitizers/lsan.supp print_suppressions=0" ctest --preset asan -j $(JOBS)

tsan:
	cmake --preset tsan
	cmake --build --preset tsan -j $(JOBS)
	TSAN_OPTIONS="halt_on_error=1 second_deadlock_stack=1 suppressions=$(CURDIR)/tests/sanitizers/tsan.supp" ctest --preset tsan -j $(JOBS)

release:
	cmake --preset release
	cmake --build --preset release -j $(JOBS)

# Benchmarks in the release build. bench/compare_jpeg.sh times the same jobs against other tools.
bench: release
	./build/release/bench/orv_bench_codec
	./build/release/bench/orv_bench_resample
	./build/release/bench/orv_bench_temp_save
	./build/release/bench/orv_bench_session_peak
	./build/release/bench/orv_bench_compose
	./build/release/bench/orv_bench_filters
	./build/release/bench/orv_bench_tools

# The decoders under libFuzzer (clang, AddressSanitizer, UBSan): builds build/fuzz, then runs
# each target for FUZZ_SECONDS over its seeds. New inputs go to build/fuzz/corpus, crashes to
# build/fuzz/artifacts; fuzz/corpus stays as committed.
FUZZ_SECONDS ?= 60
FUZZERS = jpeg png webp gif

fuzz:
	CC=clang CXX=clang++ cmake -S . -B build/fuzz -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DORV_FUZZ=ON
	cmake --build build/fuzz -j $(JOBS)
	@for f in $(FUZZERS); do \
	  mkdir -p build/fuzz/corpus/$$f build/fuzz/artifacts/$$f; \
	  echo "== $${f}_fuzzer, $(FUZZ_SECONDS) s"; \
	  ./build/fuzz/fuzz/$${f}_fuzzer -max_total_time=$(FUZZ_SECONDS) -rss_limit_mb=3072 -print_final_stats=1 \
	    -artifact_prefix=build/fuzz/artifacts/$$f/ build/fuzz/corpus/$$f fuzz/corpus/$$f || exit 1; \
	done

format:
	git ls-files '*.h' '*.cpp' | xargs clang-format -i

clean:
	rm -rf build out
