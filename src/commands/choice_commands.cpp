#include "commands/choice_commands.h"

#include <cmath>
#include <string>

#include "base/number_format.h"
#include "commands/menus.h"

namespace pallomir {

ChoiceCommands::ChoiceCommands(MenuModel& menus, CommandHandlers& handlers, StoredChoices& choices,
                               QuestionQueue& questions)
    : menus_(menus), choices_(choices), questions_(questions) {
  handlers.Set(Command::kStartupChoice, [this](int index) {
    choices_.onStartup.Store(index);
    ShowStartup();
  });
  handlers.Set(Command::kUpdateChoice, [this](int index) {
    choices_.onUpdate.Store(index);
    ShowUpdate();
  });
  handlers.Set(Command::kUnitOfMeasureChoice, [this](int index) {
    choices_.unitOfMeasure.Store(index);
    ShowUnitOfMeasure();
  });
  handlers.Set(Command::kPortBase, [this](int) { AskPortBase(); });
}

void ChoiceCommands::ReadFirst() {
  choices_.onStartup.Read();
  choices_.onUpdate.Read();
  ShowStartup();
  ShowUpdate();
}

void ChoiceCommands::ShowOthers() {
  ShowUnitOfMeasure();
  menus_.At(Command::kPortBase).caption =
      "Local Port Range Base = " + std::to_string(choices_.portBase.Value());
}

void ChoiceCommands::ShowStartup() {
  ChooseInMenu(menus_, Command::kStartupChoice, choices_.onStartup.Value(), "On Startup: ");
}

void ChoiceCommands::ShowUpdate() {
  ChooseInMenu(menus_, Command::kUpdateChoice, choices_.onUpdate.Value(), "On Update: ");
}

void ChoiceCommands::ShowUnitOfMeasure() {
  ChooseInMenu(menus_, Command::kUnitOfMeasureChoice, choices_.unitOfMeasure.Value(), "Unit of Measure: ");
}

// The entry shows what was typed.
void ChoiceCommands::AskPortBase() {
  Question question;
  question.kind = Question::Kind::kInput;
  question.title = "Pallomir Port Selector";
  question.text =
      "Select the base port address you want to use for your UDP port(s). There is no need to change this "
      "from the default value unless a conflict occurs with the ports assigned by another application (may "
      "we suggest 18801, 28801 or 38801).";
  question.defaultText = std::to_string(choices_.portBase.Value());
  questions_.Ask(question, [this](const Answer& answer) {
    if (answer.text.empty()) return;
    const double port = ParseNumber(answer.text).value_or(-1);
    if (port < 0 || port > 65535) return AskPortBase();
    choices_.portBase.Store(static_cast<int>(std::nearbyint(port)));  // half to even
    menus_.At(Command::kPortBase).caption = "Local Port Range Base = " + answer.text;
  });
}

}  // namespace pallomir
