# make run   – set up, build and start Lantern (on a virtual display when there is none)
#              with the desktop's input method; IM=ibus or IM=fcitx5 chooses one
# make test  – set up, build and run every test, then the unit suites again
#              in a second build with the address and undefined-behaviour sanitizers
# make package – build the Debian package build/lantern_<version>_amd64.deb
BUILD ?= build
JOBS ?= $(shell nproc)

.PHONY: all setup build run test package bench clean

all: build

setup:
	@bash scripts/setup-debian.sh

$(BUILD)/build.ninja:
	cmake -S . -B $(BUILD) -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DLANTERN_WERROR=ON

build: setup $(BUILD)/build.ninja
	cmake --build $(BUILD) -j $(JOBS)

run: build
	@LANTERN_IM=$(IM) bash scripts/run.sh $(BUILD)

test: build
	@status=0; \
	bash scripts/with-session.sh ctest --test-dir $(BUILD) --output-on-failure -j $(JOBS) || status=1; \
	bash scripts/sanitized-tests.sh $(BUILD) || status=1; \
	exit $$status

package: build
	cmake --build $(BUILD) --target package

bench: build
	@bash scripts/with-session.sh bash bench/run-all.sh $(BUILD)

clean:
	rm -rf $(BUILD)
