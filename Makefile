# What people type. The build itself is CMake's (CMakePresets.json).

JOBS ?= $(shell nproc)
PREFIX ?= /usr/local/qrd
DESTDIR ?=
# Warnings stop a build in continuous integration and nowhere else.
export WERROR ?= $(if $(CI),ON,OFF)

.PHONY: demo test build all configure setup asan lint bench install clean

build: configure
	@cmake --build build -j $(JOBS) --target deployer

# Installs what is missing of packages.txt (Debian 12, as root).
setup:
	@./cmake/setup packages.txt

configure: setup
	@cmake --preset release

# Everything: the utility, the sandbox, the tests, the benchmarks.
all: configure
	@cmake --build build -j $(JOBS)

demo: configure
	@cmake --build build -j $(JOBS) --target deployer sandbox-enter
	@./examples/demo build/bin

test: all
	@ctest --test-dir build --output-on-failure -j $(JOBS)

asan: setup
	@cmake --preset asan
	@cmake --build build/asan -j $(JOBS)
	@ctest --test-dir build/asan --output-on-failure -j $(JOBS)

lint: all
	@./cmake/lint build

bench: all
	@./bench/run build/bin

install: build
	@DESTDIR=$(DESTDIR) cmake --install build --prefix $(PREFIX)

clean:
	@rm -rf build
