# Two commands do all the set-up on a fresh Debian machine:
#   make run    install what is missing, build, run the main job on the demo skin
#   make test   the same build, then the whole test suite and the package check
# and one makes the Debian package:
#   make package   build/korvi-skin-editor_VERSION_ARCH.deb
BUILD_DIR ?= build
FUZZ_DIR  ?= fuzz-build
JOBS      ?= $(shell nproc)
FUZZ_SECONDS ?= 300

PACKAGES := cmake ninja-build g++ make qt6-base-dev libbenchmark-dev \
            fonts-dejavu-core fonts-liberation2 poppler-utils \
            dpkg-dev file desktop-file-utils appstream
FUZZ_PACKAGES := clang libclang-rt-14-dev

SUDO := $(shell [ "$$(id -u)" = 0 ] || command -v sudo)

.PHONY: all deps configure build run test package package-check bench fuzz-deps fuzz clean

all: build

# Installs only what is missing; apt-get update runs only when something is.
define install_missing
	@missing=""; \
	for p in $(1); do \
	  dpkg-query -W -f='$${Status}' $$p 2>/dev/null | grep -q "install ok installed" || missing="$$missing $$p"; \
	done; \
	if [ -n "$$missing" ]; then \
	  echo "Installing:$$missing"; \
	  $(SUDO) apt-get update && \
	  DEBIAN_FRONTEND=noninteractive $(SUDO) apt-get install -y --no-install-recommends $$missing; \
	fi
endef

deps:
	$(call install_missing,$(PACKAGES))

$(BUILD_DIR)/build.ninja: | deps
	cmake -S . -B $(BUILD_DIR) -G Ninja

configure: deps $(BUILD_DIR)/build.ninja

build: configure
	cmake --build $(BUILD_DIR) -j $(JOBS)

run: build
	@./scripts/run-demo.sh $(BUILD_DIR)

test: build
	cd $(BUILD_DIR) && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j $(JOBS)
	$(MAKE) package-check

package: build
	cmake --build $(BUILD_DIR) --target package

# Builds the package, installs it on this machine, runs the installed programs
# and removes it again (needs root or sudo).
package-check: build
	./scripts/package-check.sh $(BUILD_DIR)

bench: build
	@for b in $(BUILD_DIR)/bench/bench_*; do echo "== $$b"; $$b; done

fuzz-deps:
	$(call install_missing,$(PACKAGES) $(FUZZ_PACKAGES))

# make fuzz FUZZER=fuzz_reader FUZZ_SECONDS=300
FUZZER ?= fuzz_reader
fuzz: fuzz-deps
	CC=clang CXX=clang++ cmake -S . -B $(FUZZ_DIR) -G Ninja -DKORVI_BUILD_FUZZ=ON \
	    -DKORVI_BUILD_TESTS=OFF -DKORVI_BUILD_BENCH=OFF -DCMAKE_BUILD_TYPE=RelWithDebInfo \
	    -DKORVI_PARTS="document;render"
	cmake --build $(FUZZ_DIR) -j $(JOBS) --target $(FUZZER)
	mkdir -p fuzz/corpus-$(FUZZER) fuzz/artifacts-$(FUZZER)
	$(FUZZ_DIR)/fuzz/$(FUZZER) -max_total_time=$(FUZZ_SECONDS) -timeout=10 -rss_limit_mb=4096 \
	    -artifact_prefix=fuzz/artifacts-$(FUZZER)/ \
	    fuzz/corpus-$(FUZZER) fuzz/seeds/$(FUZZER)

clean:
	rm -rf $(BUILD_DIR) $(FUZZ_DIR)
