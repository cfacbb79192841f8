#pragma once

#include <span>
#include <string>
#include <string_view>

#include "station/import/recording.h"

namespace pallomir::station {

/// One form of recordings, and how it is read. To add a form, write its reader and give it a row in
/// recording_formats.cpp.
struct RecordingFormat {
  /// Whether the content that begins with `head` has this form. `head` is the file's first 64 KiB, or all of
  /// a shorter file.
  bool (*recognises)(std::string_view head);

  /// Adds the points of a file to `recording`, until it has `maxPoints`, with segment numbers of their own.
  /// Returns why the file can't be taken, as the rest of a sentence that begins with the file's name, or an
  /// empty text. Takes little memory besides the points, however long the file is.
  std::string (*read)(const NextPart& nextPart, Recording& recording, std::size_t maxPoints);
};

/// All forms that can be imported. The last one takes whatever the others don't recognise, and its reader
/// says what is wrong with that.
std::span<const RecordingFormat> RecordingFormats();

/// Reads a file with the first of `formats` that recognises its content, or else with the last one; its name
/// does not matter. See RecordingFormat::read for the rest.
std::string ReadRecording(const NextPart& nextPart, Recording& recording,
                          std::size_t maxPoints = kMaxTrackPoints,
                          std::span<const RecordingFormat> formats = RecordingFormats());

}  // namespace pallomir::station
