#include "music/kern/ZQKernReport.h"

#include <deque>
#include <new>
#include <string>
#include <vector>

#include "frame/ZQMutedMessages.h"
#include "music/kern/ZQKernFile.h"
#include "music/kern/ZQKernRules.h"
#include "music/kern/ZQKernTrackJudge.h"
#include "music/kern/ZQKernTracks.h"

namespace zmatrix {

namespace {

constexpr size_t mostEntries = 10000;  // limits the memory for findings and for meters

// In the order of zq_KernDeparture.
const char* const departureTexts[] = {
    "a token without a pitch takes time and gives no note",
    "a note, rest or tie without a duration of its own has the duration 0",
    "the duration is truncated",
    "the end of a sounding spine sets the time back",
    "at a bar line, a spine was set to the time of the bar line",
    "fewer tokens than spines: the missing ones count as empty",
    "more tokens than spines: the surplus is ignored",
    "timing error: the reading ends here",
    "a note after a timing error is not read",
    "the line is longer than the buffer and is read as several records",
    "the last line has no line feed and is not checked",
    "no room for a further spine",
    "a tied note keeps the duration of its first token",
    "a new note in a chord with a tied one is not read",
    "a tie continues a note that does not sound here: the token is not read",
    "grace notes delay all spines",
};
static_assert(sizeof departureTexts / sizeof *departureTexts == zq_KernNumberOfDepartures);
static_assert(sizeof(zq_KernReport::departures) / sizeof(long long) == zq_KernNumberOfDepartures);

/// The message of a rule in one line, without its prefix.
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

/// The report with its storage. Hosts see the plain structure at its begin.
class OwnedReport : public zq_KernReport, public KernObserver {
 public:
  OwnedReport() : zq_KernReport() {}

  void make(const char* fileName, int preProcessingType, int trackAnalyze, const unsigned char* channelFilter) {
    KernLines lines;
    ZQKernTrackList list;
    if (!openKernFile(lines, fileName)) {
      state = zq_KernFileNotOpened;
    } else if (!checkKernFile(lines, *this)) {
      state = zq_KernFileRefused;
    } else {
      readKernFile(lines, &list, *this);
      state = departures[zq_KernTimingError] > 0 ? zq_KernFileCutShort : zq_KernFileRead;
      if (!arrangeKernTracks(&list, channelFilter, "") || !mergeKernTracks(&list, trackAnalyze)) throw std::bad_alloc();
      judgeTracks(list, preProcessingType, trackAnalyze);
    }
    tracks = tracks_.data();
    numberOfTracks = static_cast<int>(tracks_.size());
    findings = findings_.data();
    numberOfFindings = static_cast<int>(findings_.size());
    meters = meters_.data();
    numberOfMeters = static_cast<int>(meters_.size());
  }

  bool wantsLostNotes() const override { return true; }

  void brokeRule(KernRule rule, const KernPlace& place) override {
    const KernRuleText& text = textOf(rule);
    (text.isError ? errors : warnings)++;
    addFinding(text.isError ? zq_KernError : zq_KernWarning, text.number, place, text.refusesFile, 0, sentence(rule));
  }
  void departed(KernDeparture departure, const KernPlace& place, int amount) override {
    departures[departure]++;
    addFinding(zq_KernDeparted, departure, place, departure == zq_KernTimingError, amount, departureTexts[departure]);
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

  /// Runs the judge as the feed does, and stores its findings.
  void judgeTracks(const ZQKernTrackList& list, int preProcessingType, int trackAnalyze) {
    KernTrackJudge judge(list, midiSettingsFor(preProcessingType), "", mediumKernFeedTexts);
    const bool hasMerged = trackAnalyze == ZQMidiTrackAnalyzeMerged || trackAnalyze == ZQMidiTrackAnalyzeSingleAndMerged;
    for (int i = 1; i < list.getNumberOfKernObjectTracks(); i++) {
      const bool isLast = i == list.getNumberOfKernObjectTracks() - 1;
      addTrack(judge, *list.getKernObjectTrackAtIndex(i), i, hasMerged && isLast);
    }
  }

  void addTrack(KernTrackJudge& judge, const ZQKernObjectTrack& track, int index, bool isMerged) {
    MidiTrackVerdict verdict = judge.takeUp(&track, index);
    const int type = judge.settings().preProcessingType;
    if (verdict == MidiTrackVerdict::taken) verdict = judge.findMeter();
    const bool isTaken = verdict == MidiTrackVerdict::taken;
    const LearnedTrack learned = judge.learnedTrack();
    const int notesOfTrack = judge.numberOfNotes();
    tracks_.push_back({index, isMerged ? 1 : 0, notesOfTrack, isTaken ? notesOfTrack : 0, static_cast<int>(verdict), learned.nom,
                       learned.denom, learned.subType, learned.sound, type});
    if (!isTaken) return;
    notesLearned += notesOfTrack;
    judge.finish();
  }

  const char* keep(std::string_view text) { return text.empty() ? "" : texts_.emplace_back(text).c_str(); }

  const char* sentence(KernRule rule) {
    const auto index = static_cast<size_t>(rule);
    if (sentences_.size() <= index) sentences_.resize(index + 1, nullptr);
    if (sentences_[index] == nullptr) sentences_[index] = keep(sentenceOf(textOf(rule)));
    return sentences_[index];
  }

  std::vector<zq_KernFinding> findings_;
  std::vector<zq_KernMeter> meters_;
  std::vector<zq_KernTrack> tracks_;
  std::deque<std::string> texts_;
  std::vector<const char*> sentences_;  // by rule, null until used
};

}  // namespace

zq_KernReport* createKernReport(const char* fileName, int preProcessingType, int midiTrackAnalyze,
                                const unsigned char* channelFilter) {
  const MutedMessages muted;
  OwnedReport* report = nullptr;
  try {
    report = new OwnedReport;
    report->make(fileName, preProcessingType, midiTrackAnalyze, channelFilter);
  } catch (const std::bad_alloc&) {
    delete report;
    return nullptr;
  }
  return report;
}

void deleteKernReport(zq_KernReport* report) {
  delete static_cast<OwnedReport*>(report);
}

}  // namespace zmatrix
