# make run   – set up, build and start Lantern (on a virtual display when there is none)
# make test  – set up, build and run every test
BUILD ?= build
JOBS ?= $(shell nproc)

.PHONY: all setup build run test bench clean

all: build

setup:
	@bash scripts/setup-debian.sh

$(BUILD)/build.ninja:
	cmake -S . -B $(BUILD) -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo

build: setup $(BUILD)/build.ninja
	cmake --build $(BUILD) -j $(JOBS)

run: build
	@bash scripts/run.sh $(BUILD)

test: build
	@bash scripts/with-session.sh ctest --test-dir $(BUILD) --output-on-failure -j $(JOBS)

bench: build
	@bash scripts/with-session.sh bash bench/run-all.sh $(BUILD)

clean:
	rm -rf $(BUILD)
