# Two commands do all the set-up on a fresh Debian machine:
#   make run    install what is missing, build, run the main job on the demo skin
#   make test   the same build, then the whole test suite and the package check
# and one makes the Debian package:
#   make package   build/korvi-skin-editor_VERSION_ARCH.deb
# The Windows programs are cross-built here too, and tested under Wine:
#   make windows           build-windows/: korvi-editor.exe, korvi.exe, the tests
#   make windows-test      the whole test suite and the smoke test under Wine
#   make windows-package   the zip and the installer a Windows user downloads
BUILD_DIR ?= build
FUZZ_DIR  ?= fuzz-build
JOBS      ?= $(shell nproc)
FUZZ_SECONDS ?= 300

PACKAGES := cmake ninja-build g++ make qt6-base-dev libbenchmark-dev \
            fonts-dejavu-core fonts-liberation2 poppler-utils \
            dpkg-dev file desktop-file-utils appstream
FUZZ_PACKAGES := clang libclang-rt-14-dev
WINDOWS_PACKAGES := g++-mingw-w64-x86-64-posix mingw-w64-tools wine64 xvfb xauth \
            fonts-wine nsis zip unzip ccache
WINDOWS_DIR ?= build-windows
WINDOWS_TEST_JOBS ?= 2

SUDO := $(shell [ "$$(id -u)" = 0 ] || command -v sudo)

.PHONY: all deps configure build run test package package-check bench fuzz-deps fuzz-configure fuzz \
        fuzz-check clean \
        windows-deps windows windows-test windows-package

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

fuzz-configure: fuzz-deps
	CC=clang CXX=clang++ cmake -S . -B $(FUZZ_DIR) -G Ninja -DKORVI_BUILD_FUZZ=ON \
	    -DKORVI_BUILD_TESTS=OFF -DKORVI_BUILD_BENCH=OFF -DCMAKE_BUILD_TYPE=RelWithDebInfo \
	    -DKORVI_PARTS="document;render"

# make fuzz FUZZER=fuzz_reader FUZZ_SECONDS=300
FUZZER ?= fuzz_reader
fuzz: fuzz-configure
	cmake --build $(FUZZ_DIR) -j $(JOBS) --target $(FUZZER)
	mkdir -p fuzz/corpus-$(FUZZER) fuzz/artifacts-$(FUZZER)
	$(FUZZ_DIR)/fuzz/$(FUZZER) -max_total_time=$(FUZZ_SECONDS) -timeout=10 -rss_limit_mb=4096 \
	    -artifact_prefix=fuzz/artifacts-$(FUZZER)/ \
	    fuzz/corpus-$(FUZZER) fuzz/seeds/$(FUZZER)

# Every fuzz target built (clang only sees some mistakes) and run once over
# each of its seeds: CI stops on a target that no longer builds or a seed
# that fails.
FUZZERS := fuzz_reader fuzz_rl fuzz_properties fuzz_lossless
fuzz-check: fuzz-configure
	cmake --build $(FUZZ_DIR) -j $(JOBS) --target $(FUZZERS)
	@for f in $(FUZZERS); do \
	    echo "== $$f over its seeds"; \
	    log=$(FUZZ_DIR)/$$f-seeds.log; \
	    $(FUZZ_DIR)/fuzz/$$f -timeout=10 -rss_limit_mb=4096 fuzz/seeds/$$f/* >$$log 2>&1 \
	        || { cat $$log; exit 1; }; \
	    echo "   $$(grep -c '^Executed' $$log) seeds passed"; \
	done

windows-deps:
	$(call install_missing,$(PACKAGES) $(WINDOWS_PACKAGES))

# Qt for Windows is made once per machine (scripts/windows-qt.sh says how);
# the host's moc, rcc and uic of the same version come from qt6-base-dev.
$(WINDOWS_DIR)/build.ninja: | windows-deps
	qt=$$(./scripts/windows-qt.sh) && \
	cmake -S . -B $(WINDOWS_DIR) -G Ninja \
	    -DCMAKE_TOOLCHAIN_FILE=cmake/mingw-w64-x86_64.cmake \
	    -DCMAKE_PREFIX_PATH="$$qt" -DQT_HOST_PATH=/usr \
	    -DQT_HOST_PATH_CMAKE_DIR=/usr/lib/x86_64-linux-gnu/cmake \
	    -DCMAKE_CXX_COMPILER_LAUNCHER=ccache -DCMAKE_BUILD_TYPE=Release \
	    -DKORVI_BUILD_BENCH=OFF -DKORVI_LTO=OFF

windows: windows-deps $(WINDOWS_DIR)/build.ninja
	cmake --build $(WINDOWS_DIR) -j $(JOBS)

# Wine shows the windows on a virtual X display, with Qt's own Windows plugin;
# Wine starts its own services there once before the tests.
# The smoke test compares korvi.exe's pictures with the Linux build's, and the
# installer test installs and removes what windows-package made.
windows-test: build windows-package
	cd $(WINDOWS_DIR) && xvfb-run -a -s "-screen 0 1280x1024x24" sh -c \
	    './wine-run.sh cmd /c exit && ctest --output-on-failure -j $(WINDOWS_TEST_JOBS)'

windows-package: windows
	cmake --build $(WINDOWS_DIR) --target windows-package

clean:
	rm -rf $(BUILD_DIR) $(FUZZ_DIR) $(WINDOWS_DIR)
