# One entry point for a fresh Debian 12 machine: installs what is missing,
# configures, builds, and runs.
#   make run       build the desktop program alone and start it on its sample project
#   make sample    build the command-line tool and walk the sample parcel with it
#   make test      build everything and run every test
#   make package   build the programs and make the Debian package (build/parvenna_*.deb)
#   make install   build the programs and install them under PREFIX (default /usr/local)
#   make sanitize  build and run every test under AddressSanitizer and UBSan
#   make fuzz      build the fuzz targets with clang and run each for FUZZ_SECONDS
#   make bench     build and run the benchmarks
# WERROR=ON makes warnings errors, as CI does.

BUILD      ?= build
BUILD_TYPE ?= RelWithDebInfo
JOBS       ?= $(shell nproc)
FUZZ_SECONDS ?= 60
WERROR     ?= OFF
PREFIX     ?= /usr/local

# file and dpkg-dev: CPack reads the programs' library needs with them.
PACKAGES := g++ cmake ninja-build pkg-config libgtest-dev libgmock-dev libbenchmark-dev \
            libsqlite3-dev sqlite3 qt6-base-dev libgdal-dev poppler-utils file dpkg-dev
FUZZ_PACKAGES := clang libclang-rt-14-dev
SUDO := $(shell [ "$$(id -u)" -eq 0 ] || echo sudo)

.PHONY: deps fuzz-deps configure build programs run sample test package install sanitize fuzz \
        bench clean

# DWG drawings are read by LibreDWG on Node.js: Debian's nodejs and npm unless
# a node and an npm are there already; the build installs the pinned package
# with npm ci.
deps:
	@missing=$$(for p in $(PACKAGES); do dpkg -s $$p >/dev/null 2>&1 || echo $$p; done); \
	command -v node >/dev/null 2>&1 || missing="$$missing nodejs"; \
	command -v npm >/dev/null 2>&1 || missing="$$missing npm"; \
	if [ -n "$$missing" ]; then \
	  echo "Installing Debian packages:" $$missing; \
	  $(SUDO) apt-get update -q && \
	  $(SUDO) env DEBIAN_FRONTEND=noninteractive apt-get install -y -q $$missing; \
	fi

fuzz-deps:
	@missing=$$(for p in $(FUZZ_PACKAGES); do dpkg -s $$p >/dev/null 2>&1 || echo $$p; done); \
	if [ -n "$$missing" ]; then \
	  $(SUDO) apt-get update -q && \
	  $(SUDO) env DEBIAN_FRONTEND=noninteractive apt-get install -y -q $$missing; \
	fi

configure: deps
	cmake -S . -B $(BUILD) -G Ninja -DCMAKE_BUILD_TYPE=$(BUILD_TYPE) -DPARVENNA_WERROR=$(WERROR)

build: configure
	cmake --build $(BUILD) -j $(JOBS)

# The programs and the files supplied with them, without tests or benchmarks.
programs: configure
	cmake --build $(BUILD) -j $(JOBS) --target parvenna parvenna-cli

run: configure
	cmake --build $(BUILD) -j $(JOBS) --target parvenna
	cd $(BUILD)/bin && ./parvenna sample_feet.pvd

sample: configure
	cmake --build $(BUILD) -j $(JOBS) --target parvenna-cli
	$(BUILD)/bin/parvenna-cli close samples/sample_parcel.csv --check

test: build
	ctest --test-dir $(BUILD) --output-on-failure -j $(JOBS)

package: programs
	cd $(BUILD) && cpack -G DEB

# Through sudo only where the prefix is not the user's to write.
install: programs
	@if mkdir -p "$(PREFIX)" 2>/dev/null && [ -w "$(PREFIX)" ]; then \
	  cmake --install $(BUILD) --prefix "$(PREFIX)"; \
	else \
	  $(SUDO) cmake --install $(BUILD) --prefix "$(PREFIX)"; \
	fi

sanitize: deps
	cmake -S . -B $(BUILD)-sanitize -G Ninja -DCMAKE_BUILD_TYPE=Debug -DPARVENNA_WERROR=$(WERROR) \
	  -DPARVENNA_SANITIZE=ON -DPARVENNA_BENCH=OFF
	cmake --build $(BUILD)-sanitize -j $(JOBS)
	ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1 \
	  LSAN_OPTIONS=suppressions=$(CURDIR)/tests/lsan.supp \
	  ctest --test-dir $(BUILD)-sanitize --output-on-failure -j $(JOBS)

fuzz: deps fuzz-deps
	cmake -S . -B $(BUILD)-fuzz -G Ninja -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_COMPILER=clang++ \
	  -DPARVENNA_FUZZ=ON -DPARVENNA_BENCH=OFF -DPARVENNA_WERROR=OFF
	cmake --build $(BUILD)-fuzz -j $(JOBS) --target parvenna_fuzzers
	@for f in $(BUILD)-fuzz/tests/*_fuzz; do \
	  echo "== $$f for $(FUZZ_SECONDS) s"; \
	  $$f -max_total_time=$(FUZZ_SECONDS) -print_final_stats=1 || exit 1; \
	done

bench: build
	@for b in $(BUILD)/bench/*_bench; do echo "== $$b"; $$b; done

clean:
	rm -rf $(BUILD) $(BUILD)-sanitize $(BUILD)-fuzz
