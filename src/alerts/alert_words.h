#pragma once

namespace pallomir {

/// The modes of the signal, as they are stored; 0 and 1 play once for each batch, 2 until it is stopped.
inline constexpr const char* kAlertModes[] = {"Disabled", "Once", "Persistent"};
inline constexpr int kPersistentMode = 2;

/// The sounds, stored as their place from 1: caption in the menu, and name of the file without ".wav".
struct AlertSound {
  const char* caption;
  const char* tag;
};
inline constexpr AlertSound kAlertSounds[] = {
    {"&1 Raucous", "Raucous"}, {"&2 Chord", "Chord"}, {"&3 Pop", "Pop"},           {"&4 Ding", "Ding"},
    {"&5 Shhh...", "Shhh"},    {"&6 Tick", "Tick"},   {"&7 Soft Tick", "SoftTick"}};

/// After what time data are stale, stored as the place from 1.
inline constexpr const char* kStaleAges[] = {"1 Hour", "4 Hours", "8 Hours", "1 Day", "Never Goes Stale"};

/// For how long the user wants to hear nothing.
enum class MuteFor { kNothing, kHour, kUntilTomorrow, kUntilSwitchedOn };

}  // namespace pallomir
