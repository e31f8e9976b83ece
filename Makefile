# demo and test are all that a newcomer needs; both install what is missing first.
BUILD ?= release
SOURCES = $(shell git ls-files '*.h' '*.c' '*.cpp')

.PHONY: demo test bench build windows test-windows package reproducible format lint clean setup configure

demo: configure
	cmake --build --preset $(BUILD) --target telvo telvo-camera
	scripts/demo.sh build/$(BUILD)

test: setup
	scripts/test.sh

bench: build
	scripts/bench.sh build/$(BUILD)

build: configure
	cmake --build --preset $(BUILD)

configure: setup
	cmake --preset $(BUILD) >build/configure-$(BUILD).log || { cat build/configure-$(BUILD).log; false; }

windows: setup
	cmake --preset windows >build/configure-windows.log || { cat build/configure-windows.log; false; }
	cmake --build --preset windows --target TelvoDll telvo telvo-camera

test-windows: windows
	cmake --preset release >build/configure-release.log || { cat build/configure-release.log; false; }
	cmake --build --preset release --target telvo-camera
	cmake --build --preset windows
	ctest --preset windows --parallel $$(nproc)

package: windows
	cpack --preset windows

# Builds the Windows programs once more and compares.
reproducible: windows
	scripts/reproducible.sh

format:
	clang-format -i $(SOURCES)

lint: build
	clang-format --dry-run --Werror $(SOURCES)
	run-clang-tidy -quiet -p build/$(BUILD) '^$(CURDIR)/(src|gige|platform|camera|tools|tests|bench)/'

clean:
	rm -rf build

setup:
	@scripts/setup.sh
