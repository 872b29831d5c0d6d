# One command each: `make run` sets everything up and starts Tamrick,
# `make test` sets everything up and runs every test.
JOBS ?= $(shell nproc)
CONFIGURE = cmake -S . -G Ninja -Wno-dev

PREFIX ?= /usr/local

.PHONY: deps run test sanitize bench fuzz format clean install deb

deps:
	@bash scripts/install-deps.sh

run: deps
	$(CONFIGURE) -B build/release -DCMAKE_BUILD_TYPE=Release
	cmake --build build/release --target tamrick -j $(JOBS)
	./build/release/src/tamrick

test: deps
	$(CONFIGURE) -B build/test -DCMAKE_BUILD_TYPE=RelWithDebInfo -DTAMRICK_BUILD_BENCH=OFF
	cmake --build build/test -j $(JOBS)
	QT_QPA_PLATFORM=offscreen ctest --test-dir build/test --output-on-failure -j $(JOBS)

# Installs the programs, launcher entry, icons, metainfo, manual pages and
# bash completion under PREFIX (default /usr/local).
install: deps
	$(CONFIGURE) -B build/release -DCMAKE_BUILD_TYPE=Release
	cmake --build build/release --target tamrick tamrick-cli tamrick_manuals -j $(JOBS)
	cmake --install build/release --prefix $(PREFIX)

# A Debian package, tamrick_VERSION-1_ARCH.deb in this folder, made by CPack;
# its dependencies are worked out by dpkg-shlibdeps.
deb: deps
	$(CONFIGURE) -B build/deb -DCMAKE_BUILD_TYPE=Release -DTAMRICK_BUILD_TESTS=OFF -DTAMRICK_BUILD_BENCH=OFF
	cmake --build build/deb -j $(JOBS)
	cd build/deb && cpack -G DEB
	cp build/deb/tamrick_*.deb .

# The core suite again under AddressSanitizer and UndefinedBehaviorSanitizer.
sanitize: deps
	$(CONFIGURE) -B build/asan -DCMAKE_BUILD_TYPE=Debug -DTAMRICK_SANITIZE=ON -DTAMRICK_BUILD_BENCH=OFF
	cmake --build build/asan --target tamrick_core_tests tamrick-cli -j $(JOBS)
	ctest --test-dir build/asan -L core --output-on-failure -j $(JOBS)

bench: deps
	$(CONFIGURE) -B build/release -DCMAKE_BUILD_TYPE=Release
	cmake --build build/release --target bench -j $(JOBS)
	./build/release/bench/bench

# The file readers under libFuzzer (clang), FUZZ_SECONDS per target.
fuzz: deps
	FUZZ_SECONDS=$(or $(FUZZ_SECONDS),20) JOBS=$(JOBS) bash scripts/fuzz.sh

format:
	git ls-files '*.cpp' '*.h' | xargs clang-format -i

clean:
	rm -rf build
