#pragma once

#include "commands/command_handlers.h"
#include "settings/stored_choices.h"
#include "ui/question_queue.h"

namespace pallomir {

/// The commands that choose and store something and do no more: when to load and to fit, the unit of measure,
/// the local port. The menus show the choice.
class ChoiceCommands {
 public:
  /// Takes over the commands. All arguments outlive it.
  ChoiceCommands(MenuModel& menus, CommandHandlers& handlers, StoredChoices& choices,
                 QuestionQueue& questions);

  /// Reads the two choices that come first in the settings file, and shows them.
  void ReadFirst();
  /// Shows the others, as they have been read.
  void ShowOthers();

 private:
  void ShowStartup();
  void ShowUpdate();
  void ShowUnitOfMeasure();
  void AskPortBase();

  MenuModel& menus_;
  StoredChoices& choices_;
  QuestionQueue& questions_;
};

}  // namespace pallomir
