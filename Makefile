# The short front of the project. Everything is built under build/, results are left under out/.

.DEFAULT_GOAL := help
.PHONY: help run test windows bench format clean

help:  ## Show this list
	@grep -E '^[a-z]+:.*## ' $(MAKEFILE_LIST) | sed -E 's/^([a-z]+):.*## (.*)/  make \1\t\2/' | expand -t 18

run:  ## Set up, build, and run the sample report in LibreOffice; results under out/
	@tools/install-packages.sh run
	@cmake --preset release -DQVA_TESTS=OFF > /dev/null
	@cmake --build --preset release
	@build/release/tools/report-runner --build-folder build/release --output-folder out \
	  --form-answers samples/balance.answers --expect Balansas.xls samples/balance.fods

test:  ## Set up, build everything and run all tests
	@tools/install-packages.sh run test windows
	@tools/test.sh

windows:  ## Cross-compile for 64-bit and 32-bit Windows
	@tools/install-packages.sh windows
	@cmake --preset windows-x64 > /dev/null && cmake --build --preset windows-x64
	@cmake --preset windows-x86 > /dev/null && cmake --build --preset windows-x86

bench:  ## Build and run the benchmarks
	@tools/install-packages.sh run bench windows
	@cmake --preset release -DQVA_TESTS=OFF -DQVA_BENCH=ON > /dev/null
	@cmake --build --preset release
	@build/release/bench/qva_bench
	@tools/bench-calc.sh
	@tools/bench-windows.sh

format:  ## Format all sources
	@git ls-files '*.h' '*.cpp' | xargs clang-format -i

clean:  ## Remove everything that was built
	@rm -rf build out
