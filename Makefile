# What people type. The build itself is CMake's (CMakePresets.json).

JOBS ?= $(shell nproc)
PREFIX ?= /usr/local/qrd
DESTDIR ?=
# How long a fuzz target runs.
FUZZ_SECONDS ?= 60
# Warnings stop a build in continuous integration and nowhere else.
export WERROR ?= $(if $(CI),ON,OFF)

.PHONY: demo test test-all build all configure setup asan lint analyze bench fuzz \
        coverage install clean

build: configure
	@cmake --build build -j $(JOBS) --target deployer restorectl

# Installs what is missing of packages.txt (Debian 12, as root).
setup:
	@./cmake/setup packages.txt

configure: setup
	@cmake --preset release

# Everything: the utility, the sandbox, the tests, the benchmarks.
all: configure
	@cmake --build build -j $(JOBS)

demo: configure
	@cmake --build build -j $(JOBS) --target deployer restorectl sandbox-enter
	@./examples/demo build/bin

test: all
	@ctest --test-dir build --output-on-failure -j $(JOBS)

# The same, with a failure of every call of the example restore in place of one of each kind.
test-all: all
	@GUARDS=all ctest --test-dir build --output-on-failure -j $(JOBS)

asan: setup
	@cmake --preset asan
	@cmake --build build/sanitized -j $(JOBS)
	@ctest --test-dir build/sanitized --output-on-failure -j $(JOBS)

lint: setup
	@cmake --preset lint
	@./cmake/lint build/lint

# The path-sensitive analyser of clang-tidy, which is slower than all the rest of the lint.
analyze: setup
	@cmake --preset lint
	@git ls-files 'src/*.cpp' | xargs -P $(JOBS) -n 1 clang-tidy -p build/lint --quiet \
	  --checks='-*,clang-analyzer-*,-clang-analyzer-valist.Uninitialized' --warnings-as-errors='*'

# All benchmarks, or those that BENCH names: make bench BENCH="restore unpacking".
bench: all
	@./bench/run build/bin $(BENCH)

# Every fuzz target from its seeds, FUZZ_SECONDS each.
fuzz: setup
	@cmake --preset asan
	@cmake --build build/sanitized -j $(JOBS) --target fuzz
	@./tests/fuzz/run build/sanitized/bin $(FUZZ_SECONDS)

# Which lines of src/ the tests run, by file.
coverage: setup
	@cmake --preset coverage
	@cmake --build build/coverage -j $(JOBS)
	@ctest --test-dir build/coverage --output-on-failure -j $(JOBS)
	@gcovr --root . --filter src/ build/coverage

install: build
	@DESTDIR=$(DESTDIR) cmake --install build --prefix $(PREFIX)

clean:
	@rm -rf build
