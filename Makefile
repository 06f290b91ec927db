# Korvath — the commands a player and a developer need. See README.md.

BUILD_DIR   ?= build
ASAN_DIR    ?= build-asan
FUZZ_DIR    ?= build-fuzz
GAME_DIR    := $(BUILD_DIR)/game
JOBS        ?= $(shell nproc)
SHELL       := /bin/bash
.SHELLFLAGS := -o pipefail -c
XVFB        := xvfb-run -a -s "-screen 0 1280x1024x24"
TEST_ENV    := SDL_AUDIODRIVER=dummy KORVATH_HEADLESS=1 LIBGL_ALWAYS_SOFTWARE=1
FUZZ_SECONDS ?= 10
# Rebuilds reuse earlier compilations when ccache is installed.
CCACHE      := $(if $(shell command -v ccache),-DCMAKE_CXX_COMPILER_LAUNCHER=ccache -DCMAKE_C_COMPILER_LAUNCHER=ccache)

.PHONY: all deps build data contact-sheet screens play test test-asan fuzz bench soak clean

all: build

deps:
	@./scripts/install-deps.sh

$(BUILD_DIR)/CMakeCache.txt:
	cmake -S . -B $(BUILD_DIR) -DCMAKE_BUILD_TYPE=RelWithDebInfo $(CCACHE)

build: deps $(BUILD_DIR)/CMakeCache.txt
	cmake --build $(BUILD_DIR) -j $(JOBS)

# The game directory: everything the game reads, built from the sources in data/: the
# pictures, then the data files (parts, entities, levels, shops, campaigns), then a check of
# the whole directory, pictures included (FORGE_CHECK_FLAGS=--no-art leaves them out).
FORGE_CHECK_FLAGS ?=
data: build
	@mkdir -p $(GAME_DIR)
	$(BUILD_DIR)/tools/artgen/korvath-artgen $(GAME_DIR) --data data
	$(BUILD_DIR)/tools/audiogen/korvath-audiogen $(GAME_DIR) --data data
	$(BUILD_DIR)/tools/forge/korvath-forge build data $(GAME_DIR)
	$(BUILD_DIR)/tools/forge/korvath-forge check $(GAME_DIR) $(FORGE_CHECK_FLAGS)

# Every picture of the game directory on one PNG, each with its name beneath:
# build/contact-sheet.png. CONTACT_SHEET_FLAGS passes options (--match TEXT, --zoom N, ...).
contact-sheet: data
	$(BUILD_DIR)/tools/contactsheet/korvath-contactsheet $(GAME_DIR) $(BUILD_DIR)/contact-sheet.png $(CONTACT_SHEET_FLAGS)

# A tour of every screen of the game, played in the game's own code with scripted hands:
# one PNG per screen in build/screens/ and all of them on build/screens.png.
screens: data
	cmake --build $(BUILD_DIR) -j $(JOBS) --target korvath_screens
	rm -f $(BUILD_DIR)/screens/*.png
	mkdir -p $(BUILD_DIR)/screens
	KORVATH_SCREENS_DIR=$(CURDIR)/$(BUILD_DIR)/screens $(TEST_ENV) $(XVFB) $(BUILD_DIR)/tests/korvath_screens
	$(BUILD_DIR)/tools/contactsheet/korvath-contactsheet $(BUILD_DIR)/screens $(BUILD_DIR)/screens.png --png --cell 480 --width 2000

play: data
	cd $(GAME_DIR) && ../korvath $(ARGS)

test: data fuzz test-asan
	cd $(BUILD_DIR) && $(TEST_ENV) $(XVFB) ctest --output-on-failure -j $(JOBS)

test-asan: deps
	cmake -S . -B $(ASAN_DIR) -DCMAKE_BUILD_TYPE=Debug -DKORVATH_SANITIZE=ON -DKORVATH_BENCH=OFF $(CCACHE)
	cmake --build $(ASAN_DIR) -j $(JOBS)
	cd $(ASAN_DIR) && $(TEST_ENV) $(XVFB) ctest --output-on-failure -j $(JOBS)

fuzz: deps
	cmake -S . -B $(FUZZ_DIR) -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++ \
		-DKORVATH_FUZZ=ON -DKORVATH_TESTS=OFF -DKORVATH_BENCH=OFF $(CCACHE)
	cmake --build $(FUZZ_DIR) -j $(JOBS) --target fuzzers
	@for f in $(CURDIR)/$(FUZZ_DIR)/fuzz/*_fuzz; do \
		name=$$(basename $$f); corpus=$(CURDIR)/$(FUZZ_DIR)/corpus/$$name; log=$(CURDIR)/$(FUZZ_DIR)/$$name.log; \
		mkdir -p $$corpus; \
		if $$f -max_total_time=$(FUZZ_SECONDS) $$corpus > $$log 2>&1; then \
			echo "$$name: no failure, $$(ls $$corpus | wc -l) inputs in the corpus"; \
		else \
			tail -n 60 $$log; echo "$$name failed; its log is $$log"; exit 1; \
		fi; \
	done

bench: build
	@for b in $(BUILD_DIR)/bench/*_bench; do \
		echo "== $$b"; \
		$(TEST_ENV) $(XVFB) $$b || exit 1; \
	done

# Thirty minutes of game time of the hive mission, headless and as fast as it runs, a bot at
# the controls: resident memory, heap and the world's objects every game minute. SOAK_FLAGS
# passes options (--minutes N, --every SECONDS, --seed N, --mission NAME).
SOAK_FLAGS ?=
soak: data
	cd $(GAME_DIR) && ../tools/soak/korvath-soak --minutes 30 $(SOAK_FLAGS)

clean:
	rm -rf $(BUILD_DIR) $(ASAN_DIR) $(FUZZ_DIR)
