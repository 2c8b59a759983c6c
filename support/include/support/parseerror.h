// How the programs answer a command line the parser refuses: the same way in every program.
#pragma once

#include <CLI/CLI.hpp>

#include <iostream>
#include <string>
#include <vector>

namespace CorvelleSupport {

// --help and --version print and give 0; every misuse gives one line naming what was wrong and
// exit code 2, never the parser's own codes (106, 109, ...), which mean nothing to a caller.
inline int answerParseError(CLI::App& app, const CLI::ParseError& error, const char* program) {
    if (error.get_exit_code() == 0)
        return app.exit(error);
    // An unknown word where a command belongs is reported by the parser as a command missing.
    const std::vector<std::string> stray = app.remaining();
    const bool unknownCommand = dynamic_cast<const CLI::RequiredError*>(&error) && !stray.empty();
    std::cerr << program << ": "
              << (unknownCommand ? "unknown command '" + stray.front() + "'" : error.what())
              << " (see " << program << " --help)\n";
    return 2;
}

} // namespace CorvelleSupport
