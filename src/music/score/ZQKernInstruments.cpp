#include "music/score/ZQKernInstruments.h"

#include <algorithm>
#include <iterator>

namespace zmatrix {

namespace {

struct Instrument {
  std::string_view code;
  int program;
};

// Sorted by code. An instrument without a General MIDI program has that of a similar instrument.
constexpr Instrument instruments[] = {
    {"accor", 21},  {"alto", 52},   {"anvil", 14},  {"archl", 24},  {"armon", 22},  {"arpa", 46},   {"bagpI", 109},
    {"bagpS", 109}, {"banjo", 105}, {"barit", 52},  {"baset", 71},  {"bass", 52},   {"bdrum", 117}, {"bguit", 33},
    {"biwa", 106},  {"bscan", 52},  {"bspro", 52},  {"calam", 71},  {"calpe", 82},  {"calto", 52},  {"campn", 14},
    {"cangl", 69},  {"caril", 14},  {"castr", 52},  {"casts", 115}, {"cbass", 43},  {"cello", 42},  {"cemba", 6},
    {"cetra", 24},  {"chime", 14},  {"chlma", 111}, {"chlms", 111}, {"chlmt", 111}, {"clara", 71},  {"clarb", 71},
    {"clarp", 71},  {"clars", 71},  {"clave", 115}, {"clavi", 7},   {"clest", 8},   {"cnalt", 52},  {"colsp", 52},
    {"cor", 60},    {"cornm", 109}, {"corno", 60},  {"cornt", 56},  {"coro", 52},   {"crshc", 127}, {"ctenr", 52},
    {"ctina", 21},  {"drmsp", 52},  {"eguit", 27},  {"fag_c", 70},  {"fagot", 70},  {"false", 52},  {"feme", 52},
    {"fife", 72},   {"flt", 73},    {"flt_a", 73},  {"flt_b", 73},  {"fltda", 73},  {"fltdb", 73},  {"flugh", 56},
    {"fluth", 73},  {"forte", 0},   {"fortp", 0},   {"glock", 9},   {"gong", 14},   {"guitr", 24},  {"hammd", 17},
    {"heltn", 52},  {"hichi", 52},  {"horn", 60},   {"hurdy", 110}, {"kit", 118},   {"kokyu", 110}, {"komun", 107},
    {"koto", 107},  {"kruma", 111}, {"krumb", 111}, {"krums", 111}, {"krumt", 111}, {"liuto", 24},  {"lyrsp", 52},
    {"lyrtn", 52},  {"mando", 25},  {"marac", 115}, {"marim", 12},  {"mezzo", 52},  {"moog", 81},   {"nfant", 52},
    {"oboe", 68},   {"oboeD", 68},  {"ocari", 79},  {"organ", 19},  {"panpi", 75},  {"piano", 0},   {"piatt", 127},
    {"picco", 72},  {"pipa", 106},  {"porta", 19},  {"psalt", 15},  {"qin", 107},   {"quitr", 24},  {"rackt", 70},
    {"ranbo", 111}, {"rebec", 110}, {"recd", 74},   {"recda", 74},  {"recdb", 74},  {"recdr", 74},  {"recds", 74},
    {"recdt", 74},  {"reedo", 20},  {"sarod", 104}, {"sarus", 70},  {"saxA", 65},   {"saxB", 67},   {"saxC", 66},
    {"saxN", 64},   {"saxR", 67},   {"saxS", 64},   {"saxT", 66},   {"sdrum", 118}, {"serp", 58},   {"setar", 104},
    {"shaku", 77},  {"shami", 106}, {"shen", 20},   {"sheng", 20},  {"sitar", 104}, {"soprn", 52},  {"spshc", 52},
    {"steel", 114}, {"stim", 52},   {"sxhA", 60},   {"sxhB", 58},   {"sxhC", 58},   {"sxhR", 58},   {"sxhS", 56},
    {"sxhT", 57},   {"synth", 80},  {"tabla", 116}, {"tambn", 115}, {"tambu", 104}, {"tanbr", 104}, {"tenor", 52},
    {"timpa", 47},  {"tiorb", 24},  {"tom", 117},   {"trngl", 115}, {"tromb", 57},  {"tromp", 56},  {"tromt", 57},
    {"tuba", 58},   {"ukule", 24},  {"vibra", 11},  {"vina", 104},  {"viola", 41},  {"violb", 42},  {"viold", 41},
    {"violn", 40},  {"violp", 40},  {"viols", 41},  {"violt", 41},  {"vox", 52},    {"xylo", 13},   {"zithr", 15},
    {"zurna", 111},
};

constexpr Instrument classes[] = {{"bras", 61}, {"klav", 0}, {"str", 48}, {"vox", 52}};

template <size_t count>
int programOf(const Instrument (&table)[count], std::string_view code) {
  const auto isBefore = [](const Instrument& row, std::string_view other) { return row.code < other; };
  const auto row = std::lower_bound(std::begin(table), std::end(table), code, isBefore);
  return row != std::end(table) && row->code == code ? row->program : -1;
}

constexpr bool isByCode(const Instrument& one, const Instrument& other) {
  return one.code < other.code;
}
static_assert(std::is_sorted(std::begin(instruments), std::end(instruments), isByCode));
static_assert(std::is_sorted(std::begin(classes), std::end(classes), isByCode));

}  // namespace

int programOfKernInstrument(std::string_view code) {
  const int program = programOf(instruments, code);
  if (program >= 0) return program;
  code = code.substr(0, code.find_last_not_of("0123456789 ") + 1);
  if (code.ends_with('_')) code.remove_suffix(1);
  return programOf(instruments, code);
}

int programOfKernInstrumentClass(std::string_view code) {
  return programOf(classes, code);
}

}  // namespace zmatrix
