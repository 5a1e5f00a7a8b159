// Enumerations of the values of settings. They are saved, printed and passed to hosts as plain ints, so each has an explicit
// number; a field of such a type may hold any other int as well.
#pragma once

/// The kind of data in a sub-matrix: `matrixType`.
enum ZQMatrixType : int {
  ZQMatrixTypeUndefined = 0,
  ZQMatrixTypeMIDINoteAndQuanta = 1,     ///< note and time pairs
  ZQMatrixTypeIntegerSeries = 2,         ///< integer series, symbols
  ZQMatrixTypeANSIText = 3,              ///< text
  ZQMatrixTypeMIDITriple_NDMT = 4,       ///< note, time, duration
  ZQMatrixTypeMIDIGMQuadruple_NDMTS = 5  ///< note, time, duration, sound
};

/// The tier of an info record or of a matrix: `updateInfoType`, `matrixInfoType`.
enum ZQMatrixInfoType : int { ZQMatrixInfoTypeBase = 0, ZQMatrixInfoTypeMedium = 1, ZQMatrixInfoTypeFull = 2 };

enum ZQLanguage : int {
  ZQLanguageUndefined = 0,
  ZQLanguageGerman = 1,
  ZQLanguageEnglish = 2,
  ZQLanguageFrench = 3,
  ZQLanguageSpanish = 4
};

enum ZQMidiSubType : int {
  ZQMidiSubTypeUndefined = 0,
  ZQMidiSubTypeMonophon = 1,
  ZQMidiSubTypePolyphon = 2,
  ZQMidiSubTypePercussion = 3,
  ZQMidiSubTypeMultiChannel = 4
};

/// Families of General MIDI programs. 9 is not used.
enum ZQMatrixSoundID : int {
  ZQMatrixSoundUndefined = 0,
  ZQMatrixSoundPiano = 1,
  ZQMatrixSoundChromaticPercussion = 2,
  ZQMatrixSoundOrgan = 3,
  ZQMatrixSoundGuitar = 4,
  ZQMatrixSoundBass = 5,
  ZQMatrixSoundStrings = 6,
  ZQMatrixSoundEnsemble = 7,
  ZQMatrixSoundBrass = 8,
  ZQMatrixSoundReed = 10,
  ZQMatrixSoundPipe = 11,
  ZQMatrixSoundSynthLead = 12,
  ZQMatrixSoundSynthPad = 13,
  ZQMatrixSoundPercussive = 14,
  ZQMatrixSoundEffects = 15
};

/// Saved, printed and compared; the library gives a meaning to 0 only: not set.
enum ZQMatrixMusicStyle : int { ZQMatrixMusicStyleUndefined = 0 };

/// How a sequence is recoded before it is learned; 1 to 999 are differences of that order.
enum ZQPreProcessingType : int {
  ZQPreProcessingTypeNone = 0,
  ZQPreProcessingTypeHighestDifference = 999,
  ZQPreProcessingTypeANSIText = 1000,
  ZQPreProcessingTypeSecondText = 1001,
  ZQPreProcessingTypeMidiNoteAndModQuanta = 1002,   ///< note interval, quanta modulo bar
  ZQPreProcessingTypeMidiTriple_NDMT = 1003,        ///< the same with duration
  ZQPreProcessingTypeMidiGMQuadruple_NDMTS = 1004,  ///< the same with duration and sound
  ZQPreProcessingTypeOcron = 1010,
  ZQPreProcessingTypeGocron = 1011,
  ZQPreProcessingTypePrimeOcron = 1012,
  ZQPreProcessingTypePrimeGocron = 1013,
  ZQPreProcessingTypeVirtualOcron = 1014,
  ZQPreProcessingTypeVirtualGocron = 1015,
  ZQPreProcessingTypeGocronValue = 1016,
  ZQPreProcessingTypePrimePi = 1017,
  ZQPreProcessingTypeNthPrime = 1018,
  ZQPreProcessingTypeNotPrimePi = 1019,
  ZQPreProcessingTypeNthNotPrime = 1020
};

enum ZQSuccessorMethod : int {
  ZQSuccessorMethodMostProbable = 1,
  ZQSuccessorMethodMiddle = 2,  ///< the middle one of the list
  ZQSuccessorMethodRandom = 3   ///< drawn by probability
};

/// Width of a coordinate that a host writes: `allowLargeIndices`.
enum ZQLargeIndices : int { ZQLargeIndicesNone = 0, ZQLargeIndices32Bit = 1, ZQLargeIndices64Bit = 2 };
