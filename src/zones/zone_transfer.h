#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "base/work_progress.h"
#include "platform/event_loop.h"
#include "ui/question_queue.h"
#include "zones/zone_exchange.h"
#include "zones/zones.h"

namespace pallomir {

/// Zones go to files that other programs read, and come from them: which file, what to do with the zones that
/// are there already, and what went wrong. Reading and writing goes on beside the event loop, one file at a
/// time; the user sees how far it is and can cancel it.
class ZoneTransfer {
 public:
  /// All outlive this object.
  ZoneTransfer(ZonesView& view, EventLoop& loop, QuestionQueue& questions, Zones& zones);
  ~ZoneTransfer() { Cancel(); }

  // Nothing happens while a file is on its way.
  void Export();
  void Import();
  void Cancel();

 private:
  using Work = std::function<void(WorkProgress& progress)>;
  void Begin(const std::string& what, Work work, std::function<void()> then,
             std::function<void()> cancelled = {});
  void End();
  void ShowProgress();
  void ExportTo(const std::filesystem::path& file);
  void Write(const std::filesystem::path& file, ZoneFormat format);
  void ImportFrom(const std::filesystem::path& file);
  void TakeIn(std::shared_ptr<const ImportedZones> imported);
  void Store(const ZoneTree& zones, bool replace);
  void Fail(const std::string& text);

  ZonesView& view_;
  EventLoop& loop_;
  QuestionQueue& questions_;
  Zones& zones_;
  // While work is done.
  std::shared_ptr<WorkProgress> progress_;
  std::string what_;
  std::function<void()> cancelled_;
  std::unique_ptr<Timer> look_;
  int exports_ = 0;  // begun
};

}  // namespace pallomir
