#pragma once

#include <optional>

#include "journal/journal_view.h"
#include "platform/notifier.h"

namespace pallomir::fakes {

/// Keeps what is shown of the journal.
class FakeJournalView : public JournalView {
 public:
  void ShowJournal(JournalList& shown, const Choices& now, Actions toDo) override {
    list = &shown;
    choices = now;
    actions = std::move(toDo);
  }
  void RefreshJournal() override {}
  void ShowJournalNote(const std::string& text) override { note = text; }
  void AskCsvFile(std::function<void(const std::filesystem::path&)> then) override { fileChosen = then; }
  void ShowOpenAlerts(std::size_t count, std::function<void()> chosen) override {
    openAlerts = count;
    bell = std::move(chosen);
  }
  void CloseJournal() override { list = nullptr; }

  JournalList* list = nullptr;  // while the window is open
  Choices choices;
  Actions actions;
  std::string note;
  std::function<void(const std::filesystem::path&)> fileChosen;
  std::optional<std::size_t> openAlerts;
  std::function<void()> bell;
};

class FakeNotifier : public Notifier {
 public:
  struct Notice {
    std::string title;
    std::string text;
    std::function<void()> clicked;
  };
  void Notify(const std::string& title, const std::string& text, std::function<void()> clicked) override {
    shown.push_back({title, text, std::move(clicked)});
  }
  void Close() override { shown.clear(); }

  std::vector<Notice> shown;
};

}  // namespace pallomir::fakes
