#pragma once

#include <functional>

#include "platform/instance_signal.h"
#include "platform/named_mutex.h"
#include "platform/user_registry.h"
#include "ui/question_queue.h"

namespace pallomir {

inline constexpr char kInstanceMutex[] = "Pallomir Browser";

/// The one key of the per-user registry: the main window's number in decimal.
inline constexpr char kWindowHandleKey[] = "Main Window Handle";

/// Lets one instance of the program run. Calls `run` when this is the first one, and keeps the mutex;
/// otherwise says why not, asks the first instance to come forward where there is one, and calls `end`.
void GuardInstance(NamedMutex& mutex, UserRegistry& registry, InstanceSignal& signal,
                   QuestionQueue& questions, const std::function<void()>& run, std::function<void()> end);

}  // namespace pallomir
