#pragma once

#include <filesystem>

#include "ui/question_queue.h"
#include "zones/zone_exchange.h"
#include "zones/zones.h"

namespace pallomir {

/// Zones go to files that other programs read, and come from them: which file, what to do with the zones that
/// are there already, and what went wrong.
class ZoneTransfer {
 public:
  /// All outlive this object.
  ZoneTransfer(ZonesView& view, QuestionQueue& questions, Zones& zones)
      : view_(view), questions_(questions), zones_(zones) {}

  void Export();
  void Import();

 private:
  void ExportTo(const std::filesystem::path& file);
  void Write(const std::filesystem::path& file, ZoneFormat format);
  void ImportFrom(const std::filesystem::path& file);
  void TakeIn(const ImportedZones& imported);
  void Fail(const std::string& text);

  ZonesView& view_;
  QuestionQueue& questions_;
  Zones& zones_;
};

}  // namespace pallomir
