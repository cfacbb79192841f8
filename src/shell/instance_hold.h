#pragma once

#include <functional>

#include "base/trace.h"
#include "platform/instance_signal.h"
#include "platform/named_mutex.h"
#include "ui/question_queue.h"

namespace pallomir {

/// What makes this instance the only one: the mutex, and the signal by which a second start raises it.
class InstanceHold {
 public:
  InstanceHold(NamedMutex& mutex, InstanceSignal& signal, QuestionQueue& questions, Trace& trace);

  void Listen() { signal_.Listen(); }
  void StopListening() { signal_.Stop(); }

  /// Lets both go, so that a new instance finds them free.
  void LetGo();
  /// The new instance could not be started: this one goes on.
  void TakeBack();

  /// At the end: releases the mutex where it is still held. `then` follows the answer to the message of a
  /// failure, or comes at once.
  void Release(const std::function<void()>& then);

 private:
  NamedMutex& mutex_;
  InstanceSignal& signal_;
  QuestionQueue& questions_;
  Trace& trace_;
  bool isLetGo_ = false;
};

}  // namespace pallomir
