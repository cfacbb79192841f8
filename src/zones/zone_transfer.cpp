#include "zones/zone_transfer.h"

#include <memory>
#include <string>
#include <utility>

#include "base/whole_file.h"

namespace pallomir {
namespace {

std::string CountText(const ZoneTree& tree) {
  return tree.Count() == 1 ? "1 zone" : std::to_string(tree.Count()) + " zones";
}

// Long enough that what is read at once shows nothing.
constexpr int kLookMilliseconds = 250;

ImportedZones Read(const std::filesystem::path& file, ZoneFormat format, WorkProgress& progress) {
  ImportedZones zones;
  std::error_code error;
  const auto text = ReadWholeFile(file, kMaxImportSize, error);
  if (text) zones = ImportZones(*text, format, &progress);
  if (!zones.problem.empty()) zones.problem.insert(0, "Nothing was imported. ");
  if (!text) zones.problem = "The file " + file.string() + " can't be read: " + error.message() + ".";
  return zones;
}

}  // namespace

void ZoneTransfer::Fail(const std::string& text) {
  questions_.Tell(text, "Pallomir", Question::Icon::kExclamation);
}

ZoneTransfer::ZoneTransfer(ZonesView& view, EventLoop& loop, QuestionQueue& questions, Zones& zones)
    : view_(view),
      loop_(loop),
      questions_(questions),
      zones_(zones),
      look_(loop.CreateTimer("ZoneTransfer", kLookMilliseconds, [this] { ShowProgress(); })) {}

void ZoneTransfer::Begin(const std::string& what, Work work, std::function<void()> then,
                         std::function<void()> cancelled) {
  progress_ = std::make_shared<WorkProgress>();
  what_ = what;
  cancelled_ = std::move(cancelled);
  look_->SetEnabled(true);
  loop_.RunBeside([work = std::move(work), progress = progress_] { work(*progress); },
                  [this, then = std::move(then), progress = progress_] {
                    if (progress->isCancelled) return;  // and this object may be gone
                    End();
                    then();
                  });
}

void ZoneTransfer::End() {
  progress_.reset();
  look_->SetEnabled(false);
  view_.HideProgress();
}

void ZoneTransfer::Cancel() {
  if (!progress_) return;
  progress_->isCancelled = true;
  End();
  if (const auto cancelled = std::exchange(cancelled_, {})) cancelled();
}

void ZoneTransfer::ShowProgress() {
  view_.ShowProgress(what_, progress_->percent, [this] { Cancel(); });
}

void ZoneTransfer::Export() {
  if (!progress_) view_.AskExportFile([this](const std::filesystem::path& file) { ExportTo(file); });
}

void ZoneTransfer::ExportTo(const std::filesystem::path& file) {
  const auto format = FormatOfName(file.filename().string());
  if (!format)
    return Fail("The name of the file says which form it has: it ends in .geojson, .json or .kml.");
  std::error_code error;
  if (!std::filesystem::exists(file, error)) return Write(file, *format);
  Question question;
  question.kind = Question::Kind::kOkCancel;
  question.icon = Question::Icon::kQuestion;
  question.title = "Export Zones";
  question.text = "The file " + file.string() + " exists already. Do you want to replace it?";
  questions_.Ask(question, [this, file, format](const Answer& answer) {
    if (answer.yes) Write(file, *format);
  });
}

void ZoneTransfer::Write(const std::filesystem::path& file, ZoneFormat format) {
  if (progress_) return;
  const auto error = std::make_shared<std::error_code>();
  const auto zones = std::make_shared<const ZoneTree>(zones_.Tree());
  // One that was cancelled may still be at its file.
  const std::string suffix = ".new" + std::to_string(++exports_);
  Begin(
      "Zones are exported to " + file.string(),
      [file, format, zones, error, suffix](WorkProgress& progress) {
        const std::string text = ExportZones(*zones, format);
        if (!progress.isCancelled) *error = ReplaceFile(file, text, suffix);
      },
      [this, file, zones, error] {
        if (*error) return Fail("The zones could not be exported: " + error->message() + ".");
        questions_.Tell(CountText(*zones) + " exported to " + file.string() + ".");
      });
}

void ZoneTransfer::Import() {
  if (!progress_) view_.AskImportFile([this](const std::filesystem::path& file) { ImportFrom(file); });
}

void ZoneTransfer::ImportFrom(const std::filesystem::path& file) {
  if (progress_) return;
  const auto format = FormatOfName(file.filename().string());
  if (!format) return Fail("Zones are imported from files whose names end in .geojson, .json or .kml.");
  const auto imported = std::make_shared<ImportedZones>();
  Begin(
      "Zones are read from " + file.string(),
      [file, format, imported](WorkProgress& progress) { *imported = Read(file, *format, progress); },
      [this, imported] {
        if (!imported->problem.empty()) return Fail(imported->problem);
        TakeIn(imported);
      });
}

void ZoneTransfer::TakeIn(std::shared_ptr<const ImportedZones> imported) {
  // What says nothing about the kind takes that of the zones in use.
  const auto inPlace = [this](const ImportedZones& zones) {
    if (zones.namesKind) return zones.tree;
    return WithZonesAppended(ZoneTreeBuilder(zones_.Tree().TopLevelKind()).Build(), zones.tree);
  };
  if (zones_.Tree().IsEmpty()) return Store(inPlace(*imported), true);
  std::string text = "The file has " + CountText(imported->tree) + ". Add to the " +
                     CountText(zones_.Tree()) + " in use, or replace them?";
  const ZoneKind kind = zones_.Tree().TopLevelKind();
  if (imported->namesKind && imported->tree.TopLevelKind() != kind)
    text += std::string("\n\nIn the file the zones at the top level are \"") + NameOf(OtherKind(kind)) +
            "\". If they are added they become \"" + NameOf(kind) + "\".";
  view_.AskAddOrReplace(text, [this, inPlace, imported](ZonesView::ImportChoice choice) {
    if (choice == ZonesView::ImportChoice::kAdd) Store(imported->tree, false);
    if (choice == ZonesView::ImportChoice::kReplace) Store(inPlace(*imported), true);
  });
}

void ZoneTransfer::Store(const ZoneTree& zones, bool replace) {
  if (progress_) return;
  const auto pending = zones_.BeginImport(zones, replace);
  if (!pending) return;
  Begin(
      "The zones are saved",
      [pending](WorkProgress& progress) {
        pending->Write();
        if (!progress.isCancelled) pending->Project();
      },
      [this, pending] { zones_.EndImport(*pending); }, [this] { zones_.CancelImport(); });
}

}  // namespace pallomir
