# The front door: everything a person does with the project starts here.

preset ?= release
build := build/$(preset)

.PHONY: setup build test demo bench fuzz torture lint format check-format check-includes sanitize install clean

setup:
	@tools/setup

# A preset's build folder, told of only where it fails.
configure = mkdir -p build/$(1) && cmake --preset $(1) >build/$(1)/configure.log 2>&1 || \
	{ cat build/$(1)/configure.log; exit 1; }

build: setup
	@$(call configure,$(preset))
	@cmake --build $(build)

test: build
	@ctest --test-dir $(build) --output-on-failure --no-tests=error --parallel 2

# verbose: tells every step. Sets up and builds no more than it runs.
demo:
	@tools/setup demo
	@$(call configure,demo)
	@echo "demo: building; from nothing this takes some minutes"
	@cmake --build build/demo --target sentrel-springboard sentrel-app sentrelctl sentrel-sim -- --quiet
	@tools/demo build/demo/bin $(if $(verbose),--verbose)

# Both sides of every ratio in one run, on one CPU, so that they share its state.
bench: build
	@tools/bench $(build)/bin

# seconds: how long each fuzzer runs.
seconds ?= 60
fuzz: setup
	@cmake --preset fuzz && cmake --build build/fuzz
	@tools/fuzz build/fuzz/bin $(seconds)

# Kills, faults, crowds and other people's files; takes minutes.
torture: build
	@tools/torture $(build)/bin

# The tests under the address, undefined-behaviour and thread sanitizers.
sanitize:
	@$(MAKE) --no-print-directory test preset=asan
	@$(MAKE) --no-print-directory test preset=tsan

lint: setup check-includes check-format
	@tools/lint

format: setup
	@tools/format

check-format: setup
	@tools/format --check

check-includes: setup
	@tools/check-includes

# prefix: where to install.
prefix ?= /usr/local
install: build
	@cmake --install $(build) --prefix $(prefix)

clean:
	@rm -rf build
