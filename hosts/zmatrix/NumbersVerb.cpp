// `zmatrix numbers`: prints the factors, ocrons and gocrons of numbers, and what evaluating those gives.
#include <memory>
#include <string>
#include <vector>

#include "Arithmetic.h"
#include "NumberContinuation.h"
#include "OptionChecks.h"
#include "Options.h"
#include "Output.h"
#include "Statistics.h"
#include "Verbs.h"

namespace {

struct NumbersOptions {
  std::vector<int> numbers;
  bool json = false;
};

constexpr int ocronTypes[] = {3, 4, 5, 6, 7};

const char* const examples = R"(
An ocron is a number written as a postfix program: 2 pushes two, P replaces the top by the prime of that index, * multiplies, ^ raises
to a power, Q applies P as often as the top says. A gocron is an ocron read as one number in a base of its own. Type 6 has only primes
(P) and non-primes (*), and starts from 1. The value columns show the result of evaluation; it can differ for a gocron, because
leading symbols of value 0 are lost.

Examples:
  zmatrix numbers 12 97 1024
  zmatrix numbers 360 --json | jq '.[0].codes[] | select(.type == 4).ocron'

)";

template <class Value>
Json orNull(const std::optional<Value>& value) {
  return value ? Json(*value) : Json(nullptr);
}

Json codesOf(int number) {
  Json codes = Json::array();
  for (const int type : ocronTypes) {
    setOcronType(type);
    const std::optional<std::string> ocron = ocronOf(type, number);
    const std::optional<long long> gocron = gocronOf(type, number);
    codes.push_back({{"type", type},
                     {"ocron", orNull(ocron)},
                     {"ocron_value", ocron ? orNull(valueOfOcron(type, *ocron)) : Json(nullptr)},
                     {"gocron", orNull(gocron)},
                     {"gocron_value", gocron ? orNull(valueOfGocron(type, *gocron)) : Json(nullptr)}});
  }
  return codes;
}

Json factorsAsJson(int number) {
  Json factors = Json::array();
  for (const PrimePower& factor : factorsOf(number)) factors.push_back({{"prime", factor.prime}, {"power", factor.power}});
  return factors;
}

std::string productOf(int number) {
  std::string product;
  for (const PrimePower& factor : factorsOf(number)) {
    product += (product.empty() ? "" : " * ") + std::to_string(factor.prime);
    if (factor.power > 1) product += "^" + std::to_string(factor.power);
  }
  return product.empty() ? "no product of primes" : product;
}

Json withDashes(Json codes) {
  for (Json& code : codes) {
    for (auto& member : code.items()) {
      if (member.value().is_null()) member.value() = "-";
    }
  }
  return codes;
}

void runNumbers(const NumbersOptions& options) {
  keepStandardOutputForResults();
  prepareArithmetic(ZQPreProcessingTypePrimeOcron, 0, options.numbers);  // the coding that needs the largest table
  Output output("");
  Json all = Json::array();
  for (const int number : options.numbers) {
    const Json codes = codesOf(number);
    if (options.json) {
      all.push_back({{"number", number}, {"factors", factorsAsJson(number)}, {"codes", codes}});
    } else {
      output.write(std::to_string(number) + " = " + productOf(number) + "\n" + linesOf(withDashes(codes)));
      if (&number != &options.numbers.back()) output.write("\n");
    }
  }
  if (options.json) output.write(jsonText(all));
  output.commit();
}

}  // namespace

void addNumbersVerb(CLI::App& app) {
  const auto options = std::make_shared<NumbersOptions>();
  CLI::App* verb = app.add_subcommand("numbers", "Print factors, ocrons and gocrons of numbers");
  verb->add_option("N", options->numbers, "Integers of 32 bits")
      ->required()
      ->check(wholeNumber(-2147483648LL, 2147483647))
      ->option_text(" ");
  verb->add_flag("--json", options->json, "Print JSON instead of tables");
  verb->footer(std::string(examples) + exitCodes);
  verb->callback([options] { runNumbers(*options); });
}
