#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>

#include "base/bytes.h"
#include "base/civil_time.h"
#include "base/trace.h"
#include "platform/clock.h"
#include "platform/event_loop.h"
#include "settings/choice.h"
#include "tracking/coverage.h"
#include "tracking/feed_view.h"
#include "tracking/live_watch.h"
#include "tracking/mobile_units.h"
#include "tracking/packet_stream.h"
#include "tracking/point_store.h"
#include "tracking/reconnect.h"
#include "tracking/retry_prompt.h"
#include "tracking/server_connection.h"
#include "ui/question_queue.h"

namespace pallomir {

/// What the feed works with. All of it outlives the feed.
struct FeedPorts {
  ServerEndpoints network;
  EventLoop& loop;
  Clock& clock;
  QuestionQueue& questions;
  Trace& trace;
};

/// All that came up to a packet that ended where the buffer ended.
struct MergedBatch {
  std::set<std::size_t> units;  ///< k of those that sent points, new or known
  /// By k, the packed time without flag of the earliest of these points.
  std::map<std::size_t, std::uint32_t> earliest;
  const DataPoint* newest = nullptr;  ///< of all stored points; null without any. Valid until the next batch
  std::size_t leftOut = 0;            ///< records without a possible place or date
  bool isLive = false;                ///< taken in as it came, behind the first batch of a load
  bool breaksSilence = false;         ///< the first one with new points for ten minutes
};

/// Brings the points of the displayed units into the store: connection, packets, points. What comes is
/// decoded in one go after a pause, so that one batch on the wire is one batch for the user; then arrivals
/// are held until the user fits or reloads. Failures go to the retry dialog. The feed tells how it stands by
/// caption and lamp; of map and windows it knows nothing.
///
/// While it is live nothing is held, batches that bring nothing new are told to nobody, and a connection that
/// ends is made anew by itself, without a dialog: it asks for what came since, and `LiveWatch` finds the ends
/// that nobody reports.
class DataFeed {
 public:
  struct UtcSpan {
    Millis start = 0;
    Millis end = 0;
  };

  /// What the feed asks and whom it tells. All calls come from the event loop.
  struct Host {
    std::function<UtcSpan()> window;  ///< of the points that are wanted
    std::function<bool()> isDrawing;  ///< the points are being read: none is decoded meanwhile
    std::function<bool()> hasUndrawnPoints;
    std::function<std::string()> note;  ///< what else the lamp says; may be empty

    std::function<void()> restarting;      ///< the connection is made anew
    std::function<void()> arrived;         ///< what will be decoded has come
    std::function<void()> beforeDecoding;  ///< points are about to move, whoever reads them
    std::function<void()> pointsMoved;     ///< point j of a unit may be another one now
    std::function<void(const MergedBatch&)> batchMerged;
    std::function<void()> endSession;  ///< the user has had enough of retrying

    std::string locatorHost;
    std::string faqAddress;
  };

  /// `units` are those whose points are stored and asked for, as they are at each call.
  DataFeed(const FeedPorts& ports, FeedView& view, const UnitBook& units, const Choice<int>& portBase,
           Host host);

  /// Drops what has not been decoded, closes the retry dialog and asks for the data anew. The points stay.
  void Restart();
  /// Empties the store for the units as they are now, and ends the hold.
  void Forget();
  /// Ends the hold and decodes what came during it, unless too little of it is there.
  void TakeInHeld();
  /// Closes the connection for good. Nothing is told or shown from here on.
  void Close();

  /// Takes points in as they come from now on, or no longer. What is held is taken in; a connection that has
  /// ended is made anew. Switched off while one waits to be, its failure goes to the retry dialog.
  void SetLive(bool on);

  // The retry dialog's buttons.
  void RetryNow();
  void StopRetrying();
  void EndSession();

  /// From now on caption and lamp are brought up to date every second.
  void BeginTelling();
  void ShowLamp();

  const PointStore& Points() const { return store_; }
  const ServerConnection& Connection() const { return connection_; }

 private:
  ServerConnection::Host ConnectionHost();
  std::string DataRequest();
  void DropStream();
  void TakeArrival(ByteView bytes);
  void OnPause();
  void Decode();
  bool Merge(std::size_t k, ByteView records);
  bool EndsBatch(const PacketStream::Outcome& outcome);
  void FinishBatch();
  void OnBroken(const PacketStream::Outcome& outcome);
  void TellAge();

  // While it is live.
  void OnFailure(const std::string& code, const std::string& message);
  void OnConnectionLost(const std::string& why);
  void AskAnew();
  void Watch();

  FeedPorts ports_;
  FeedView& view_;
  const UnitBook& units_;
  const Choice<int>& portBase_;
  Host host_;

  PacketStream stream_;
  PointStore store_;
  MergedBatch batch_;             // what has been decoded of it
  std::size_t newBytes_ = 0;      // arrived since the buffer was last decoded
  bool isStoreFullTold_ = false;  // in this connection

  bool isLive_ = false;
  bool endedHold_ = false;  // since it is live
  bool hasLoaded_ = false;  // the first batch of this load has been told
  int partsOfBatch_ = 0;    // decoded without an end in sight
  std::size_t toldPoints_ = 0;
  Millis lastNews_ = 0;  // UTC, of a batch with new points
  Millis askedUntil_ = 0;
  Coverage coverage_;
  LiveWatch watch_;
  std::string failureCode_;  // of the last one, for the dialog
  std::string failureMessage_;
  std::string trouble_;  // why the connection was lost, for the lamp

  ServerConnection connection_;
  RetryPrompt retry_;
  Reconnect reconnect_;
  std::unique_ptr<Timer> dataPause_;
  std::unique_ptr<Timer> lastUpdateTimer_;
};

}  // namespace pallomir
