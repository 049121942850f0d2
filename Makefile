# The short front of the project. Everything is built under build/, results are left under out/.

.DEFAULT_GOAL := help
.PHONY: help run test check fuzz windows bench pictures docs samples package format clean

help:  ## Show this list
	@grep -E '^[a-z]+:.*## ' $(MAKEFILE_LIST) | sed -E 's/^([a-z]+):.*## (.*)/  make \1\t\2/' | expand -t 18

# make run REPORT=profit-loss runs another one of samples/, make run SHOW=1 on the screen.
REPORT ?= balance
archived-balance := 2025/Balansas_2025.xls
archived-profit-loss := 2025/PelnasNuostoliai_2025_12.xls
archived-vat := FR0600/PVM deklaracija_FR0600_398417265_20251231.xls
unattended = --form-answers samples/$(REPORT).answers --expect "drives/C/Ataskaitos/Archyvas/$(archived-$(REPORT))"

run:  ## Set up, build, and run a sample report in LibreOffice (REPORT=balance, profit-loss or vat; SHOW=1 on the screen)
	@tools/install-packages.sh run
	@cmake --preset release > /dev/null
	@cmake --build --preset release --target report-runner qva_calc qva_host
	@build/release/tools/report-runner --build-folder build/release --output-folder out/$(REPORT) \
	  --log $(REPORT).log $(if $(SHOW),--show,$(unattended)) samples/$(REPORT).fods

test:  ## Set up, build everything and run all tests
	@tools/install-packages.sh run test windows package
	@tools/test.sh

check:  ## The short loop: formatting of what differs from the last commit, build, tests of library and seam
	@tools/install-packages.sh run test
	@tools/check.sh

# KEEP=1 adds inputs that reach new code to tests/fuzz/corpora; otherwise they stay in out/fuzz.
SECONDS_EACH ?= 60

fuzz:  ## Look for input that breaks the product, SECONDS_EACH=60 of each kind (TARGETS="numbers ..." for some of them)
	@tools/install-packages.sh run test
	@cmake --preset fuzz > /dev/null
	@cmake --build --preset fuzz
	@tools/test-fuzz.sh $(if $(KEEP),--keep,--collect) $(SECONDS_EACH) $(TARGETS)

windows:  ## Cross-compile for 64-bit and 32-bit Windows
	@tools/install-packages.sh windows
	@cmake --preset windows-x64 > /dev/null && cmake --build --preset windows-x64
	@cmake --preset windows-x86 > /dev/null && cmake --build --preset windows-x86

bench:  ## Build and run the benchmarks
	@tools/install-packages.sh run bench windows
	@cmake --preset release -DQVA_BENCH=ON > /dev/null
	@cmake --build --preset release
	@build/release/bench/qva_bench
	@tools/bench-calc.sh
	@bench/reports.py
	@tools/bench-windows.sh

pictures:  ## Take the pictures of all windows in docs/images anew
	@tools/install-packages.sh run test windows pictures
	@cmake --preset debug -DQVA_TESTS=ON > /dev/null && cmake --build --preset debug --target qva_calc_tests
	@cmake --preset release > /dev/null && cmake --build --preset release --target report-runner qva_calc qva_host
	@cmake --preset windows-x64 -DQVA_TESTS=ON > /dev/null && cmake --build --preset windows-x64
	@tools/pictures.sh

docs:  ## Write docs/guide.md, docs/gidas.md and the doctor's findings anew from their tables, and the searchable site into out/site
	@tools/install-packages.sh run package
	@cmake --preset release > /dev/null
	@cmake --build --preset release --target guide
	@build/release/guide .
	@tools/site.sh build/release/guide

samples:  ## Put samples/QvaReport.bas into the sample workbooks anew
	@tools/embed-module.pl samples/QvaReport.bas samples/*.fods

package: windows  ## Make the packages for Windows (setup, zip), LibreOffice (oxt) and Debian (deb) under out/
	@tools/install-packages.sh run package
	@cmake --preset release > /dev/null
	@cmake --build --preset release
	@tools/package.sh build/release build/windows-x64 build/windows-x86 out

format:  ## Format all sources
	@tools/format.sh

clean:  ## Remove everything that was built
	@rm -rf build out
