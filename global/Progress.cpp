#include "global/Progress.h"

#include <string>

#include "global/Globals.h"
#include "platform/error.h"
#include "platform/services.h"
#include "platform/text.h"

namespace qva {
namespace {

using std::chrono::milliseconds;

/// How long an operation works before it says so, and at least between two texts.
constexpr milliseconds kSilence{1000};

milliseconds Now() {
  return GetServices().clock->Running();
}

}  // namespace

Progress::Progress() : since_(Now()) {
}

void Progress::Say(std::u16string_view what) {
  if (IsDue()) IgnoreFailures([&] { Show(what); });
}

void Progress::Say(std::u16string_view what, std::int64_t done, std::int64_t all) {
  if (!IsDue()) return;
  IgnoreFailures([&] { Show(std::u16string(what) + u": " + NumberText(done) + u" iš " + NumberText(all)); });
}

bool Progress::IsDue() {
  const milliseconds now = Now();
  if (!since_) since_ = now;
  if (is_refused_ || !TheGlobals().application) return false;
  return shown_at_ ? now - *shown_at_ >= kSilence : worked_ + (now - *since_) >= kSilence;
}

void Progress::Show(std::u16string_view text) {
  const excel::Application application = TheGlobals().application;
  is_refused_ = true;  // unless all goes through
  if (!shown_at_) former_ = application.StatusBar();
  shown_at_ = Now();
  application.SetStatusBar(text);
  is_refused_ = false;
}

void Progress::Pause() {
  if (since_) worked_ += Now() - *since_;
  since_.reset();
  if (!shown_at_) return;
  shown_at_.reset();
  IgnoreFailures([&] { TheGlobals().application.SetStatusBar(former_); });
}

}  // namespace qva
