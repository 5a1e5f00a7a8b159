#!/usr/bin/env python3
"""Reads a matrix file and prints each field with its offset, its bytes and its value.

An example of a reader in another language; docs/file-format.md describes the fields. It reads files of the current version, 135, of any
tier, and doesn't check them; that page lists the checks that a robust reader needs.

    read_model.py MODEL.zmatrix
"""
import struct
import sys

SETTINGS_BEFORE_NAME = ["matrixType", "allowLargeIndices", "coordinateDimension", "memorySearchMethod", "isPhraseMatrix",
                        "preProcessingType"]
SETTINGS_BEHIND_NAME = ["maxPhraseLengthForUpdateWithSequence", "useStartOfSequence", "useEndOfSequence",
                        "usePhrasesForUpdateMatrixWithLongANSIText", "skillOutputLevel", "successorMethod",
                        "restartWithTrueStartItem", "enableStopItem", "includeOverdeterminedRules", "addUpdateInfo",
                        "addSequenceToUpdateInfo", "addSequenceToUpdateInfoMode", "midiTimeSignatureNom",
                        "midiTimeSignatureDenom", "language", "midiSubType", "midiSoundID", "midiNoteOnQuantization",
                        "midiDurationQuantization", "midiTrackAnalyze", "musicStyle"]
NUMBER_CODES = ["ocronType", "ocronEndSymbol", "ocronAlgorithm", "gocronAlgorithm", "gocronNumberBase", "gocronASTERISKValue",
                "gocronPValue", "gocronTWOValue", "gocronPOWValue", "gocronQValue"]
BASE, MEDIUM, FULL = 0, 1, 2


class Reader:
    def __init__(self, data):
        self.data = data
        self.at = 0

    def show(self, size, name, value):
        raw = self.data[self.at:self.at + size]
        if len(raw) < size:
            sys.exit("the file ends inside " + name)
        used = raw.rstrip(b"\0")
        text = raw.hex(" ")
        if size - len(used) > 16:
            begin = used[:6].hex(" ") + (" .. " if len(used) > 6 else " ") if used else ""
            text = begin + "00 x %d" % (size - len(used))
        print("%06x  %-28s  %s = %s" % (self.at, text, name, value))
        self.at += size

    def number(self, name, form="<i"):
        size = struct.calcsize(form)
        if self.at + size > len(self.data):
            sys.exit("the file ends inside " + name)
        value = struct.unpack_from(form, self.data, self.at)[0]
        self.show(size, name, value)
        return value

    def numbers(self, names):
        return {name: self.number(name) for name in names}

    def text(self, name, size):
        text = self.data[self.at:self.at + size].split(b"\0")[0].decode("latin-1")
        self.show(size, name, '"%s"' % text.replace("\n", "\\n"))

    def array(self, name, length):
        """A flag, followed by the numbers if it is 1."""
        if self.number(name + " follows") == 1:
            for index in range(length):
                self.number("%s[%d]" % (name, index))


def read_block(file):
    file.numbers(SETTINGS_BEFORE_NAME)
    file.text("nameOfUpdateFile", 256)
    file.numbers(SETTINGS_BEHIND_NAME)
    file.show(16, "midiChannelFilter", "a byte a channel")
    file.numbers(NUMBER_CODES + ["keepSymbolsWhenRemoveOverdeterminedElements"])


def read_header(file):
    file.text("fileType", 8)
    file.text("matrixDescription", 504)
    header = file.numbers(["lastSoftwareVersion", "is64BitMatrix", "maxNumberOfMatrices", "numberOfMatrices", "matrixAILevel",
                           "offsetToUpdateInfos", "matrixBlockSize", "matrixBlockSizeOld", "maximalStack",
                           "numberOfMatrixUpdates", "numberOfAppendedUpdates", "matrixDebugOutputDevice"])
    file.number("userRandomValue", "<q")
    file.number("userRandomType")
    file.number("systemRandomValue", "<q")
    file.number("systemRandomType")
    header["matrixInfoType"] = file.number("matrixInfoType")
    for name in ("matrixDebugDirectory", "matrixOriginFilename", "matrixDestinationFilename"):
        file.text(name, 256)
    print("# settings for new sub-matrices of the basic level")
    read_block(file)
    print("# settings for new sub-matrices of the symbol level")
    read_block(file)
    return header


def read_record(file):
    base = file.numbers(["updateInfoSize", "magicNumber", "updateInfoType"])
    file.number("timeStamp", "<I")
    base.update(file.numbers(["softwareVersion", "matrixID", "matrixType", "allowLargeIndices", "coordinateDimension",
                              "isFinalized", "memIsReadOnly"]))
    width = base["coordinateDimension"]
    bytes_of_item = sum(abs(file.number("sizeOfCoordinateDimensions[%d]" % index)) for index in range(width))
    base.update(file.numbers(["maximalMatrixIndex", "maxDimOfMatrix", "memorySearchMethod", "currentDimension",
                              "internalCurrentDimension", "numberOfMatrixWriteEvents", "numberOfMatrixDeleteEvents",
                              "numberOfMatrixElements", "numberOfWriteElements", "numberOfWriteCounts", "numberOfEndElements",
                              "internalLengthOfTemporaryMemory"]))
    depth = base["currentDimension"]
    file.array("minimalIndices", depth)
    file.array("maximalIndices", depth)
    if base["updateInfoType"] >= MEDIUM:
        read_medium_part(file, depth, width, bytes_of_item)
    if base["updateInfoType"] >= FULL:
        file.numbers(["currentMatrixIDLevelDown", "currentMatrixIDLevelUp", "numberOfSymbols", "newSymbol",
                      "keepSymbolsWhenRemoveOverdeterminedElements"])


def read_medium_part(file, depth, width, bytes_of_item):
    file.numbers(["updateIndex", "isPhraseMatrix", "totalLengthOfAllUpdateSequences", "preProcessingType"])
    file.text("nameOfUpdateFile", 256)
    rows = file.number("lengthOfUpdateSequence")
    file.numbers(["maxPhraseLengthForUpdateWithSequence", "numberOfRuleElements", "numberOfUniqueRuleElements",
                  "numberOfOverDeterminedRules", "numberOfStartElements"])
    original = file.number("lengthOfKernelOriginalSequence")
    preprocessed = file.number("lengthOfKernelPreProcessedSequence")
    file.numbers(["internalLengthOfKernelOriginalSequence", "internalLengthOfKernelPreProcessedSequence", "kernelMatrixHandle",
                  "useStartOfSequence", "useEndOfSequence", "usePhrasesForUpdateMatrixWithLongANSIText", "skillOutputLevel",
                  "successorMethod", "restartWithTrueStartItem", "enableStopItem", "includeOverdeterminedRules",
                  "isOverDetermined", "addUpdateInfo", "addSequenceToUpdateInfo", "addSequenceToUpdateInfoMode"])
    file.number("successorRandomValue", "<q")
    file.numbers(["successorRandomType", "midiTimeSignatureNom", "midiTimeSignatureDenom", "midiSubType", "midiSoundID",
                  "midiNoteOnQuantization", "midiDurationQuantization", "midiTrackAnalyze", "musicStyle"])
    file.show(16, "midiChannelFilter", "a byte a channel")
    file.numbers(["language"] + NUMBER_CODES)
    for name in ("rulesInDimension", "uniqueRulesInDimension", "writeElementsInDimension"):
        file.array(name, depth)
    file.array("kernelOriginalSequence", width * original)
    file.array("kernelPreProcessedSequence", width * preprocessed)
    if file.number("namesOfUpdateFiles follows") == 1:
        file.text("namesOfUpdateFiles", file.number("length of namesOfUpdateFiles"))
    if file.number("updateSequence follows") == 1:
        file.show(rows * bytes_of_item, "updateSequence", "%d rows" % rows)


def read_elements(file, header):
    position = 0
    while position <= header["maximalStack"]:
        write_count = struct.unpack_from("<i", file.data, file.at)[0]
        if write_count < 0:
            file.number("slots %d to %d are empty" % (position, position - write_count - 1))
            position -= write_count
            continue
        print("# slot %d" % position)
        file.number("writeCount")
        file.number("value", "<q")
        file.numbers(["indexInDimension", "offsetToNextElementInDimension", "offsetToPreviousElementInDimension",
                      "offsetToElementInNextDimension", "offsetToElementInPrevDimension"])
        if header["matrixInfoType"] >= MEDIUM:
            file.numbers(["writeCountWithSuccessor", "writeCountWithoutPredecessor"])
        if header["matrixInfoType"] >= FULL:
            file.numbers(["symbolID", "symbolDownLinkHandle"])
        position += 1


def main():
    with open(sys.argv[1], "rb") as model:
        file = Reader(model.read())
    header = read_header(file)
    if header["lastSoftwareVersion"] != 135 or header["is64BitMatrix"] == 1:
        sys.exit("this reader knows version 135 alone")
    # There is a record for each ID up to the highest that is not empty; each has the magic number.
    while file.data[file.at + 4:file.at + 8] == struct.pack("<i", 43112609):
        print("# record of a sub-matrix")
        read_record(file)
    print("# elements")
    read_elements(file, header)
    while file.at < len(file.data):
        print("# record of the history")
        read_record(file)


if __name__ == "__main__":
    main()
