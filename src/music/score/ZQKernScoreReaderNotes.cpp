// Places the notes of a record once its time is known: new notes, tied notes, and grace notes.
#include <algorithm>

#include "music/score/ZQKernScoreReader.h"

namespace zmatrix {

namespace {

constexpr unsigned char usualVelocity = 64;
constexpr int percussionChannel = 9;

void setOnset(zq_ScoreNote& note, const ScoreTime& onset) {
  note.onset = onset.numerator;
  note.onsetDenominator = onset.denominator;
}

void setDuration(zq_ScoreNote& note, const ScoreTime& duration) {
  note.duration = duration.numerator;
  note.durationDenominator = duration.denominator;
}

void addFlag(zq_ScoreNote& note, zq_ScoreNoteFlag flag) {
  note.flags = static_cast<unsigned char>(note.flags | flag);
}

}  // namespace

void KernScoreReader::placeNotes(const Cell& cell, const ScoreTime& onset) {
  KernColumn& column = columns_.at(cell.column);
  const int group = column.graces.empty() ? 1 : column.graces.back().group + 1;
  for (size_t i = cell.firstNote; i < cell.endOfNotes; i++) {
    const KernScoreToken& note = notes_[i];
    if (note.kind == KernScoreKind::note) {
      const bool hasOwnTime = note.hasDuration || note.isGrace;
      if (!hasOwnTime && !cell.hasDuration) find(zq_ScoreNoDuration, cell.column + 1, cell.text);
      placeNote({&cell, &note, onset, hasOwnTime ? note.duration : cell.duration, group});
    } else {
      column.opensPhrase = column.opensPhrase || note.opensPhrase;
      if (note.closesPhrase) closePhrase(column);
    }
  }
}

void KernScoreReader::closePhrase(const KernColumn& column) {
  if (column.lastNote >= 0) addFlag(score_.noteAt(column.lastNote), zq_ScorePhraseEnd);
}

void KernScoreReader::placeNote(const PlacedNote& placed) {
  if (!placed.token->continuesTie) return enterNote(placed, -1);
  const KernColumn& column = columns_.at(placed.cell->column);
  const long long heldNote = ties_.take({placed.token->pitch, placed.onset, column.part}, column.spine);
  if (heldNote >= 0) return enterNote(placed, heldNote);
  orphans_.push_back(placed);
}

/// After all spines have continued their own held notes, the remaining tied notes may continue notes held in other parts.
void KernScoreReader::placeOrphans() {
  for (const PlacedNote& placed : orphans_) {
    const long long heldNote = ties_.takeOfAnyPart({placed.token->pitch, placed.onset, 0});
    if (heldNote < 0) find(zq_ScoreTieWithoutStart, placed.cell->column + 1, placed.cell->text);
    enterNote(placed, heldNote);
  }
  orphans_.clear();
}

/// `heldNote`: index of the note that is continued, or -1 for a new note.
void KernScoreReader::enterNote(const PlacedNote& placed, long long heldNote) {
  const KernScoreToken& token = *placed.token;
  KernColumn& column = columns_.at(placed.cell->column);
  const bool isNew = heldNote < 0;
  if (!isNew) prolong(heldNote, placed);
  const long long note = isNew ? addNote(placed) : heldNote;
  column.lastNote = note;
  if (token.closesPhrase) addFlag(score_.noteAt(note), zq_ScorePhraseEnd);
  if (isNew && placed.cell->isGrace) {
    column.graces.push_back({note, placed.group, token.opensTie});
  } else if (token.opensTie) {
    ties_.hold({token.pitch, sumOf(placed.onset, placed.duration).time, column.part}, column.spine, note);
  }
}

long long KernScoreReader::addNote(const PlacedNote& placed) {
  KernColumn& column = columns_.at(placed.cell->column);
  const KernScorePart& part = parts_.at(column.part);
  zq_ScoreNote note = {};
  setOnset(note, placed.onset);
  setDuration(note, placed.duration);
  note.place = line_;
  note.part = column.part;
  note.column = placed.cell->column + 1;
  note.pitch = placed.token->pitch;
  note.velocity = usualVelocity;
  note.voice = column.voice;
  note.program = part.program;
  note.sound = part.sound;
  if (placed.token->isGrace) addFlag(note, zq_ScoreGrace);
  if (part.channel == percussionChannel) addFlag(note, zq_ScorePercussion);
  if (placed.token->opensPhrase || column.opensPhrase) addFlag(note, zq_ScorePhraseBegin);
  column.opensPhrase = false;
  return score_.addNote(note);
}

void KernScoreReader::prolong(long long heldNote, const PlacedNote& placed) {
  zq_ScoreNote& note = score_.noteAt(heldNote);
  KernColumn& column = columns_.at(placed.cell->column);
  setDuration(note, settled(sumOf({note.duration, note.durationDenominator}, placed.duration), placed.cell->column));
  addFlag(note, zq_ScoreTied);
  if (!placed.token->isGrace) note.flags = static_cast<unsigned char>(note.flags & ~zq_ScoreGrace);
  column.opensPhrase = column.opensPhrase || placed.token->opensPhrase;
}

/// Places the grace notes of a column: at the onset of their main note, or in steps before it.
void KernScoreReader::settleGraces(KernColumn& column, const ScoreTime& onset) {
  if (column.graces.empty()) return;
  const int groups = column.graces.back().group;
  ScoreTime step;
  if (hasGraceDuration_ && column.onset < onset) {
    const ScoreTime room = differenceOf(onset, column.onset).time;
    step = std::min(graceDuration_, productOf(room, {1, groups + 1}).time);
  }
  for (const KernGrace& grace : column.graces) {
    zq_ScoreNote& note = score_.noteAt(grace.note);
    if (grace.opensTie) {
      setOnset(note, onset);
      ties_.hold({note.pitch, onset, column.part}, column.spine, grace.note);
    } else {
      setOnset(note, differenceOf(onset, productOf(step, {groups + 1 - grace.group, 1}).time).time);
      if (hasGraceDuration_) setDuration(note, graceDuration_);
    }
  }
  column.graces.clear();
}

}  // namespace zmatrix
