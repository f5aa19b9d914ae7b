# The commands of the project; CMake does the work. `make` alone tells them.
PRESET ?= linux
PREFIX ?= /usr/local
DESTDIR ?=
FUZZ_SECONDS ?= 60
SOAK_ROUNDS ?= 20000
BUILD := build/$(PRESET)

.PHONY: help setup build demo test test-sanitize test-windows bench fuzz soak dist install check clean

help:
	@echo 'make demo           build, and run the demo host over its patient files'
	@echo 'make test           build, and run the whole suite'
	@echo 'make test-sanitize  the suite under the address, undefined behaviour and thread sanitizers'
	@echo 'make test-windows   build for Windows too, run the whole suite there under Wine, and compare what both builds write'
	@echo 'make bench          measure beside the peers; results in build/bench/results.json'
	@echo 'make fuzz           every fuzz target for FUZZ_SECONDS (60) each'
	@echo 'make soak           kill programs that write settings, SOAK_ROUNDS (20000) times'
	@echo 'make check          formatting and static analysis'
	@echo 'make dist           build/packages: a zip for Windows, a tar.gz and Debian packages for Linux'
	@echo 'make install        into PREFIX (/usr/local), below DESTDIR'

setup:
	@scripts/setup build

build: setup
	@scripts/build $(PRESET)

demo: setup
	@scripts/build $(PRESET) workstation
	@scripts/demo $(BUILD)

test: build
	@scripts/setup test
	@scripts/run-tests $(BUILD)

test-sanitize: setup
	@scripts/setup test
	@scripts/test-sanitize

test-windows:
	@scripts/setup build windows dist
	@scripts/fetch-source tiff lua5.1 minizip
	@scripts/build linux
	@scripts/build windows
	@scripts/test-windows

dist:
	@scripts/setup build windows dist
	@scripts/fetch-source tiff lua5.1 minizip
	@scripts/dist

bench:
	@scripts/setup build bench
	@scripts/build bench
	@scripts/bench

fuzz:
	@scripts/setup build fuzz
	@scripts/build fuzz
	@scripts/fuzz $(FUZZ_SECONDS)

check:
	@scripts/setup build check
	@scripts/check

soak: build
	@KADATA_SOAK_ROUNDS=$(SOAK_ROUNDS) $(BUILD)/tests/platform_tests --gtest_filter='*SurviveProgramsThatAreKilled'

install: build
	@DESTDIR='$(DESTDIR)' cmake --install $(BUILD) --prefix '$(PREFIX)'

clean:
	rm -rf build
