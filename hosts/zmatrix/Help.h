// The layout of --help: option descriptions are wrapped.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

class Help : public CLI::Formatter {
 public:
  std::string make_option_desc(const CLI::Option* option) const override;
};
