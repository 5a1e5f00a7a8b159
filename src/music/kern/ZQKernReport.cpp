#include "music/kern/ZQKernReport.h"

#include <deque>
#include <new>
#include <string>
#include <vector>

#include "music/kern/ZQKernFile.h"
#include "music/kern/ZQKernRules.h"

namespace zmatrix {

namespace {

constexpr size_t mostEntries = 10000;  // of findings and of meters, so that no file can ask for all memory

// In the order of ZQKernDeparture.
const char* const departureTexts[] = {
    "a token without a pitch takes time and gives no note",
    "a note, rest or tie without a duration of its own has the duration 0",
    "the duration is cut",
    "the end of a sounding spine sets the time back",
    "a bar line makes a spine agree that was not at its end",
    "fewer tokens than spines: the missing ones count as empty",
    "more tokens than spines: the surplus is passed over",
    "timing error: the reading ends here",
    "a note behind a timing error is not read",
    "the line is longer than the buffer and counts as several records",
    "the last line has no line feed and is not checked",
    "no room for a further spine",
};
static_assert(sizeof departureTexts / sizeof *departureTexts == ZQKernNumberOfDepartures);
static_assert(sizeof(ZQKernReport::departures) / sizeof(long long) == ZQKernNumberOfDepartures);

/// The message of a rule in one line, without the mark that it begins with.
std::string sentenceOf(const KernRuleText& rule) {
  const std::string_view message = rule.message;
  std::string sentence;
  for (const char character : message.substr(message.find(": ", message.find(": ") + 1) + 2)) {
    const bool isBlank = character == ' ' || character == '\n';
    if (!isBlank) {
      sentence += character;
    } else if (!sentence.empty() && sentence.back() != ' ') {
      sentence += ' ';
    }
  }
  if (sentence.ends_with(' ')) sentence.pop_back();
  return sentence;
}

/// The report with its storage; hosts see the plain structure that it begins with.
class OwnedReport : public ZQKernReport, public KernObserver {
 public:
  OwnedReport() : ZQKernReport() {}

  void make(const char* fileName) {
    KernLines lines;
    ZQKernTrackList list;
    if (!openKernFile(lines, fileName)) {
      state = ZQKernFileNotOpened;
    } else if (!checkKernFile(lines, *this)) {
      state = ZQKernFileRefused;
    } else {
      readKernFile(lines, &list, *this);
      state = departures[ZQKernTimingError] > 0 ? ZQKernFileCutShort : ZQKernFileRead;
    }
    findings = findings_.data();
    numberOfFindings = static_cast<int>(findings_.size());
    meters = meters_.data();
    numberOfMeters = static_cast<int>(meters_.size());
  }

  bool wantsLostNotes() const override { return true; }

  void brokeRule(KernRule rule, const KernPlace& place) override {
    const KernRuleText& text = textOf(rule);
    (text.isError ? errors : warnings)++;
    addFinding(text.isError ? ZQKernError : ZQKernWarning, text.number, place, text.refusesFile, 0, sentence(rule));
  }
  void departed(KernDeparture departure, const KernPlace& place, int amount) override {
    departures[departure]++;
    addFinding(ZQKernDeparted, departure, place, departure == ZQKernTimingError, amount, departureTexts[departure]);
  }

  void beganSection(int numberOfSpines) override {
    sections++;
    spines += numberOfSpines;
  }
  void sawKernSpine() override { kernSpines++; }
  void tookNote(int channel) override {
    notes++;
    (channel < 16 ? notesOnChannel[channel] : notesOnOtherChannels)++;
  }
  void tookRest() override { rests++; }
  void continuedTie() override { ties++; }
  void tookGraceNote() override { graceNotes++; }
  void splitSpine() override { splits++; }
  void addedSpine() override { additions++; }
  void exchangedSpines() override { exchanges++; }
  void joinedSpine() override { joins++; }
  void endedSpine() override { ends++; }
  void sawBarLine() override { barLines++; }
  void sawMeter(int numerator, int denominator, const KernPlace& place) override {
    if (meters_.size() < mostEntries) {
      meters_.push_back({place.line, place.column, numerator, denominator});
    } else {
      metersLeftOut++;
    }
  }
  void finished(int offset) override { barOffset = offset; }

 private:
  void addFinding(int kind, int number, const KernPlace& place, bool stops, int amount, const char* text) {
    if (findings_.size() >= mostEntries) {
      findingsLeftOut++;
      return;
    }
    findings_.push_back({kind, number, place.line, place.column, stops ? 1 : 0, amount, keep(place.token), text});
  }

  const char* keep(std::string_view text) { return text.empty() ? "" : texts_.emplace_back(text).c_str(); }

  const char* sentence(KernRule rule) {
    const auto index = static_cast<size_t>(rule);
    if (sentences_.size() <= index) sentences_.resize(index + 1, nullptr);
    if (sentences_[index] == nullptr) sentences_[index] = keep(sentenceOf(textOf(rule)));
    return sentences_[index];
  }

  std::vector<ZQKernFinding> findings_;
  std::vector<ZQKernMeter> meters_;
  std::deque<std::string> texts_;
  std::vector<const char*> sentences_;  // by rule, null for those that were not needed
};

}  // namespace

ZQKernReport* createKernReport(const char* fileName) {
  OwnedReport* report = nullptr;
  try {
    report = new OwnedReport;
    report->make(fileName);
  } catch (const std::bad_alloc&) {
    delete report;
    return nullptr;
  }
  return report;
}

void deleteKernReport(ZQKernReport* report) {
  delete static_cast<OwnedReport*>(report);
}

}  // namespace zmatrix
