# Thin front door over scripts/setup.sh, CMake and CTest.
BUILD      ?= build
BUILD_ASAN ?= build-asan
BUILD_BENCH?= build-bench
BUILD_DEB  ?= build-deb
PREFIX     ?= /usr/local
JOBS       ?= $(shell nproc)
CMAKE_FLAGS?=

ifdef CI
CMAKE_FLAGS += -DTARNWELL_WERROR=ON
endif

.PHONY: setup configure build run test test-asan bench fuzz lupdate format lint lint-all install deb clean

setup:
	@scripts/setup.sh

configure: setup
	@cmake -S . -B $(BUILD) -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo $(CMAKE_FLAGS) >/dev/null

build: configure
	@cmake --build $(BUILD) -j $(JOBS)

run: build
	@$(BUILD)/bin/tarnwell $(ARGS)

# In CI the suite also runs under AddressSanitizer + UndefinedBehaviorSanitizer.
# A skipped test says why (CTest shows only the output of failed ones).
test: build
	@cd $(BUILD) && status=0 && ctest --output-on-failure -j $(JOBS) --timeout 300 || status=$$?; \
	  grep -h "SKIPPED:" Testing/Temporary/LastTest.log 2>/dev/null || true; exit $$status
	$(if $(CI),@$(MAKE) --no-print-directory test-asan)

test-asan: setup
	@cmake -S . -B $(BUILD_ASAN) -G Ninja -DCMAKE_BUILD_TYPE=Debug -DTARNWELL_SANITIZE=ON $(CMAKE_FLAGS) >/dev/null
	@cmake --build $(BUILD_ASAN) -j $(JOBS)
	@cd $(BUILD_ASAN) && ctest --output-on-failure -j $(JOBS) --timeout 600

bench: setup
	@cmake -S . -B $(BUILD_BENCH) -G Ninja -DCMAKE_BUILD_TYPE=Release -DTARNWELL_BENCH=ON $(CMAKE_FLAGS) >/dev/null
	@cmake --build $(BUILD_BENCH) -j $(JOBS) >/dev/null
	@bench/run.sh $(BUILD_BENCH)

fuzz: setup
	@$(if $(FUZZ_SECONDS_EACH),FUZZ_SECONDS_EACH=$(FUZZ_SECONDS_EACH) )fuzz/build-and-run.sh $(or $(FUZZ_SECONDS),600)

# Installs the programs and what tells the desktop about them under PREFIX.
install: build
	@cmake --install $(BUILD) --prefix $(PREFIX)

# A Debian package of a Release build, installed under /usr, checked by lintian.
deb: setup
	@cmake -S . -B $(BUILD_DEB) -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX=/usr -DTARNWELL_TESTS=OFF $(CMAKE_FLAGS) >/dev/null
	@cmake --build $(BUILD_DEB) -j $(JOBS)
	@cd $(BUILD_DEB) && cpack >/dev/null && ls -1 $(CURDIR)/$(BUILD_DEB)/*.deb
	@lintian --info $(BUILD_DEB)/*.deb

# Rewrites every C++ file in the house style.
format:
	@tools/lint.sh format

# Style, QML and static analysis; clang-tidy looks at what changed against
# main (lint-all: at everything). Needs the build's compile database.
lint: build
	@JOBS=$(JOBS) tools/lint.sh check $(BUILD)

lint-all: build
	@JOBS=$(JOBS) tools/lint.sh all $(BUILD)

lupdate: configure
	@cmake --build $(BUILD) --target lupdate

clean:
	rm -rf $(BUILD) $(BUILD_ASAN) $(BUILD_BENCH) $(BUILD_DEB)
