# Front door to the CMake presets. `make demo` and `make test` are what the README asks for.
JOBS ?= $(shell nproc)
OUT ?= $(CURDIR)/out

.PHONY: all build demo test asan tsan release format clean

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

format:
	git ls-files '*.h' '*.cpp' | xargs clang-format -i

clean:
	rm -rf build out
