#pragma once

// Music scores: readable YAML in data/music/, turned into Standard MIDI songs. The format is
// described at the top of each score file; in short:
//
//   title, file (the game's name of the song), tempo (quarter notes a minute), meter ("4/4"),
//   tracks: name -> {channel 1..16 (10 is drums), program 1..128 (General MIDI), volume, pan,
//            reverb, chorus, velocity, legato}
//   sections: name -> {bars: N, <track>: notes, <drum track>: {<drum>: grid}}
//   song: the sections in order; the song ends on the last bar line, so a looping player
//         goes straight on from the end into the first bar.
//
// Notes: "c4 e4/8 g4 r/4 c4+e4+g4/2. f#3/8t bb2'" — pitch (a to g, # or b, octave), "r" for
// a rest, "+" for a chord; "/1" to "/32" a whole to a thirty-second note, "." dotted, "t"
// triplet (the length carries on to the next notes); "'" short, ">" accented. "|" marks a bar
// line and is checked. Drums: one character a step (16 to a bar unless the song sets
// drum_steps): "x" a hit, "X" an accent, "o" a soft hit, "." or "-" nothing; spaces and "|"
// only group the steps for the eye.

#include "SoundFiles.h"

#include <string>

namespace audiogen
{

struct Score
{
    std::string gameName; // e.g. "Sound\Loops_Of_Fury.mid"
    MidiSong song;
};

// Parses a score from its text; p_displayName names it in messages. False with a message
// naming the line and what is wrong.
bool ParseScore(const std::string& p_text, const std::string& p_displayName, Score& p_score, std::string& p_error);
bool ReadScore(const std::string& p_path, Score& p_score, std::string& p_error);

// The General MIDI key of a drum name ("kick", "snare", "hat", ...), or -1.
int DrumKey(const std::string& p_name);

} // namespace audiogen
