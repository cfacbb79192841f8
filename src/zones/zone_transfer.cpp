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

}  // namespace

void ZoneTransfer::Fail(const std::string& text) {
  questions_.Tell(text, "Pallomir", Question::Icon::kExclamation);
}

void ZoneTransfer::Export() {
  view_.AskExportFile([this](const std::filesystem::path& file) { ExportTo(file); });
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
  if (const auto error = ReplaceFile(file, ExportZones(zones_.Tree(), format))) {
    Fail("The zones could not be exported: " + error.message() + ".");
  } else {
    questions_.Tell(CountText(zones_.Tree()) + " exported to " + file.string() + ".");
  }
}

void ZoneTransfer::Import() {
  view_.AskImportFile([this](const std::filesystem::path& file) { ImportFrom(file); });
}

void ZoneTransfer::ImportFrom(const std::filesystem::path& file) {
  const auto format = FormatOfName(file.filename().string());
  if (!format) return Fail("Zones are imported from files whose names end in .geojson, .json or .kml.");
  std::error_code error;
  const auto text = ReadWholeFile(file, kMaxImportSize, error);
  if (!text) return Fail("The file " + file.string() + " can't be read: " + error.message() + ".");
  const ImportedZones imported = ImportZones(*text, *format);
  if (!imported.problem.empty()) return Fail("Nothing was imported. " + imported.problem);
  TakeIn(imported);
}

void ZoneTransfer::TakeIn(const ImportedZones& imported) {
  // What says nothing about the kind takes that of the zones in use.
  const auto inPlace = [this](const ImportedZones& zones) {
    if (zones.namesKind) return zones.tree;
    return WithZonesAppended(ZoneTreeBuilder(zones_.Tree().TopLevelKind()).Build(), zones.tree);
  };
  if (zones_.Tree().IsEmpty()) return zones_.Import(inPlace(imported), true);
  std::string text = "The file has " + CountText(imported.tree) + ". Add to the " + CountText(zones_.Tree()) +
                     " in use, or replace them?";
  const ZoneKind kind = zones_.Tree().TopLevelKind();
  if (imported.namesKind && imported.tree.TopLevelKind() != kind)
    text += std::string("\n\nIn the file the zones at the top level are \"") + NameOf(OtherKind(kind)) +
            "\". If they are added they become \"" + NameOf(kind) + "\".";
  view_.AskAddOrReplace(text, [this, inPlace, kept = std::make_shared<ImportedZones>(imported)](
                                  ZonesView::ImportChoice choice) {
    if (choice == ZonesView::ImportChoice::kAdd) zones_.Import(kept->tree, false);
    if (choice == ZonesView::ImportChoice::kReplace) zones_.Import(inPlace(*kept), true);
  });
}

}  // namespace pallomir
