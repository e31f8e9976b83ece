# demo and test are all that a newcomer needs. Every target installs what it needs first.
BUILD ?= release
SOURCES = $(shell git ls-files '*.h' '*.c' '*.cpp')

.PHONY: demo test check fuzz soak bench bench-programs build windows test-windows package install deb docs reproducible format lint clean

demo:
	scripts/setup.sh build
	mkdir -p build
	cmake --preset demo >build/configure-demo.log || { cat build/configure-demo.log; false; }
	cmake --build --preset demo --target telvo telvo-camera
	scripts/demo.sh build/release

# The Windows suites meet the virtual camera of the release build, which so comes first.
test:
	scripts/setup.sh build test windows
	scripts/test.sh release windows

# What takes longer: the suites under the sanitizers, and the fuzz targets' fixed runs.
check:
	scripts/setup.sh build test
	scripts/test.sh asan
	scripts/test.sh tsan

# Looks for inputs that break a decoder; what it finds becomes a test.
fuzz: MINUTES ?= 5
fuzz:
	scripts/setup.sh build test fuzz
	scripts/fuzz.sh $(MINUTES)

# A host at work all the time, with a camera at which everything goes wrong now and then.
soak: MINUTES ?= 10
soak:
	scripts/setup.sh build test
	mkdir -p build
	cmake --preset $(BUILD) >build/configure-$(BUILD).log || { cat build/configure-$(BUILD).log; false; }
	cmake --build --preset $(BUILD) --target soak
	scripts/in-own-network.sh build/$(BUILD)/bin/soak $$(($(MINUTES) * 60))

bench: bench-programs
	scripts/bench.sh build/release

bench-programs:
	scripts/setup.sh build test bench
	mkdir -p build
	cmake --preset bench >build/configure-bench.log || { cat build/configure-bench.log; false; }
	cmake --build --preset bench

build:
	scripts/setup.sh build test
	mkdir -p build
	cmake --preset $(BUILD) >build/configure-$(BUILD).log || { cat build/configure-$(BUILD).log; false; }
	cmake --build --preset $(BUILD)

windows:
	scripts/setup.sh build windows
	mkdir -p build
	cmake --preset windows >build/configure-windows.log || { cat build/configure-windows.log; false; }
	cmake --build --preset windows --target TelvoDll telvo telvo-camera

test-windows:
	scripts/setup.sh build test windows
	mkdir -p build
	cmake --preset release >build/configure-release.log || { cat build/configure-release.log; false; }
	cmake --build --preset release --target telvo-camera
	scripts/test.sh windows

package: windows
	scripts/setup.sh docs
	cpack --preset windows

# Library, header, CMake package, pkg-config file and programs into a folder.
install: PREFIX ?= /usr/local
install:
	scripts/setup.sh build
	mkdir -p build
	cmake --preset demo >build/configure-demo.log || { cat build/configure-demo.log; false; }
	cmake --build --preset demo
	cmake --install build/release --prefix $(PREFIX)

# Debian packages of the same, into build/release/package.
deb:
	scripts/setup.sh build
	mkdir -p build
	cmake --preset demo >build/configure-demo.log || { cat build/configure-demo.log; false; }
	cmake --build --preset demo
	cpack --preset release

# The pages of docs/ as a site: build/docs/html/index.html.
docs:
	scripts/setup.sh docs
	scripts/docs.sh build/docs

# Builds the Windows programs once more and compares.
reproducible: windows
	scripts/reproducible.sh

format:
	clang-format -i $(SOURCES)

lint:
	scripts/setup.sh build test windows bench lint
	scripts/lint.py

clean:
	rm -rf build
