#pragma once
// The one reading of a command's arguments: every command says which options
// it takes and how many words, and nothing is read by hand.

#include <iosfwd>
#include <map>
#include <string>
#include <vector>

namespace cintal::cli {

struct OptionSpec {
    const char* name;        // "--db"
    bool takesValue = false; // "--db FILE"
    bool repeats = false;    // "--set A=1 --set B=2"
};

struct CommandSpec {
    std::vector<OptionSpec> options;
    std::size_t leastWords = 0;
    std::size_t mostWords = 0;
    const char* usage; // "Uso: cintal-cli ...\n"
};

class Arguments {
public:
    enum class Outcome { Ok, Help, Wrong };
    // Reads args (the command's name first). A value may not begin with "--":
    // an option given without its value must not swallow the next one. "--"
    // ends the options. On Wrong the reason and the usage are on err; on Help
    // the usage is on out.
    Outcome Parse(const std::vector<std::string>& args, const CommandSpec& spec, std::ostream& out,
                  std::ostream& err);

    bool Has(const std::string& option) const { return values.count(option) != 0; }
    // The last value given, or fallback.
    std::string Value(const std::string& option, const std::string& fallback = {}) const;
    const std::vector<std::string>& Values(const std::string& option) const;

    std::vector<std::string> words;

private:
    std::map<std::string, std::vector<std::string>> values;
};

// Parse's outcome as the command's exit: -1 to go on, else the status.
int Stop(Arguments::Outcome outcome);

// A positive whole number given as an identifier, or 0.
long long IdOf(const std::string& text);

} // namespace cintal::cli
