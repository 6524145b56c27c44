// SPDX-License-Identifier: MIT

// Writes the manual page of kvprobe, or what a shell needs to complete its command line, from the
// very options that the program takes. Runs while the program is built.

#include "probe/arguments.h"

#include <algorithm>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

namespace {

using namespace kvprobe;

std::string Replaced(std::string text, const std::string& from, const std::string& to) {
    for (size_t at = text.find(from); at != std::string::npos; at = text.find(from, at)) {
        text.replace(at, from.size(), to);
        at += to.size();
    }
    return text;
}

bool IsSame(const OptionUsage& a, const OptionUsage& b) {
    return a.names == b.names && a.value == b.value && a.description == b.description;
}

bool Has(const std::vector<OptionUsage>& options, const OptionUsage& wanted) {
    return std::any_of(options.begin(), options.end(),
                       [&wanted](const OptionUsage& option) { return IsSame(option, wanted); });
}

// The options that every command has.
std::vector<OptionUsage> CommonOptions(const Usage& usage) {
    std::vector<OptionUsage> common;
    for (const OptionUsage& option : usage.commands.front().options) {
        if (std::all_of(usage.commands.begin(), usage.commands.end(),
                        [&option](const CommandUsage& c) { return Has(c.options, option); })) {
            common.push_back(option);
        }
    }
    return common;
}

std::string AllNames(const std::vector<OptionUsage>& options) {
    std::string all;
    for (const OptionUsage& option : options) {
        for (const std::string& name : option.names) {
            all += (all.empty() ? "" : " ") + name;
        }
    }
    return all;
}

// The manual page, in troff's man macros.

std::string Troff(const std::string& text) {
    return Replaced(Replaced(text, "\\", "\\e"), "-", "\\-");
}

void PrintOption(std::ostream& out, const OptionUsage& option) {
    std::string heading;
    for (const std::string& name : option.names) {
        heading += (heading.empty() ? "\\fB" : ", \\fB") + Troff(name) + "\\fR";
    }
    if (!option.value.empty()) {
        heading += " \\fI" + Troff(option.value) + "\\fR";
    }
    out << ".TP\n" << heading << '\n' << Troff(option.description) << ".\n";
}

constexpr const char* kIntroduction = R"(.SH DESCRIPTION
.B kvprobe
tells which objects of a 3D model a probe may touch, holds or crosses.
Pipes, fences and windows go by each object's box in the object's own
coordinates, the other probes by their range.
They err on one side only: what is not listed is not touched, but for the
rounding of boxes that are huge beside the probe.
.PP
.I MODEL
is a file in any format that Assimp reads.
Points, directions and boxes are numbers with commas between them, in the
model's units.
Without a command, the probe is a pipe
.RB ( bore ).
)";

constexpr const char* kExamples = R"(.SH EXAMPLES
.TP
.B kvprobe house.ifc \-\-from 0,1,1 \-\-to 12,1,1 \-r 0.05
The objects that a pipe may touch.
.TP
.B kvprobe window house.ifc \-\-box 0,0,\-10,6,3,\-4 \-\-svg found.svg
The objects inside of a box and those that cross it, drawn.
.TP
.B kvprobe house.ifc \-\-list \-\-json
The objects and their boxes, for scripts.
)";

void PrintManual(std::ostream& out, const Usage& usage) {
    out << ".TH KVPROBE 1 " KVPROBE_DATE " \"kvgeom " KVPROBE_VERSION "\"\n"
        << ".SH NAME\nkvprobe \\- which objects of a 3D model a probe may touch\n"
        << ".SH SYNOPSIS\n.B kvprobe\n.RI [ COMMAND ]\n.I MODEL\n.RI [ OPTIONS ]\n"
        << kIntroduction << ".SH COMMANDS\n";
    for (const CommandUsage& command : usage.commands) {
        out << ".TP\n.B " << command.name << '\n' << Troff(command.summary) << ".\n";
    }
    const std::vector<OptionUsage> common = CommonOptions(usage);
    out << ".SH OPTIONS\n";
    for (const OptionUsage& option : common) {
        PrintOption(out, option);
    }
    for (const CommandUsage& command : usage.commands) {
        out << ".SS Options of " << command.name << '\n' << Troff(command.description) << '\n';
        for (const OptionUsage& option : command.options) {
            if (!Has(common, option)) {
                PrintOption(out, option);
            }
        }
    }
    out << ".SH EXIT STATUS\n" << Troff(usage.exit_status) << '\n' << kExamples;
}

// What follows options with a value, as a shell's own words: the words to choose from, or nothing.

std::string Words(const std::string& value) {
    return value.find('|') == std::string::npos ? "" : Replaced(value, "|", " ");
}

// The names of all options of a kind, with bars between them.
template <class Predicate>
std::string Pattern(const Usage& usage, Predicate is_of_kind) {
    std::vector<std::string> names;
    for (const CommandUsage& command : usage.commands) {
        for (const OptionUsage& option : command.options) {
            if (is_of_kind(option.value)) {
                names.insert(names.end(), option.names.begin(), option.names.end());
            }
        }
    }
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());
    std::string pattern;
    for (const std::string& name : names) {
        pattern += (pattern.empty() ? "" : "|") + name;
    }
    return pattern;
}

void PrintBash(std::ostream& out, const Usage& usage) {
    std::string commands;
    for (const CommandUsage& command : usage.commands) {
        commands += (commands.empty() ? "" : " ") + command.name;
    }
    out << "# bash completion for kvprobe\n"
           "_kvprobe() {\n"
           "  local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}\n"
           "  local options offered=\n"
           "  COMPREPLY=()\n"
           "  case $before in\n";
    for (const OptionUsage& option : usage.commands.front().options) {
        if (!Words(option.value).empty()) {
            out << "    " << option.names.front() << ")\n"
                << "      mapfile -t COMPREPLY < <(compgen -W \"" << Words(option.value)
                << "\" -- \"$word\")\n      return\n      ;;\n";
        }
    }
    out << "    " << Pattern(usage, [](const std::string& v) { return v == "FILE"; })
        << ")\n      mapfile -t COMPREPLY < <(compgen -f -- \"$word\")\n"
        << "      return\n      ;;\n    "
        << Pattern(
               usage,
               [](const std::string& v) { return !v.empty() && v != "FILE" && Words(v).empty(); })
        << ")\n      return\n      ;;\n  esac\n  case ${COMP_WORDS[1]} in\n";
    for (const CommandUsage& command : usage.commands) {
        const bool is_default = &command == usage.commands.data();
        if (!is_default) {
            out << "    " << command.name << ") options=\"" << AllNames(command.options)
                << "\" ;;\n";
        }
    }
    out << "    *) options=\"" << AllNames(usage.commands.front().options) << "\" ;;\n"
        << "  esac\n"
           "  if [[ $word == -* ]]; then\n"
           "    mapfile -t COMPREPLY < <(compgen -W \"$options\" -- \"$word\")\n"
           "  else\n"
           "    ((COMP_CWORD == 1)) && offered=\""
        << commands
        << "\"\n"
           "    mapfile -t COMPREPLY < <(compgen -f -W \"$offered\" -- \"$word\")\n"
           "  fi\n"
           "}\n"
           "complete -o filenames -F _kvprobe kvprobe\n";
}

std::string Quoted(const std::string& text) {
    return "'" + Replaced(text, "'", "'\\''") + "'";
}

// In an optspec of _arguments, brackets and colons end the texts.
std::string ZshText(const std::string& text) {
    return Replaced(Replaced(Replaced(text, "[", "\\["), "]", "\\]"), ":", "\\:");
}

void PrintZsh(std::ostream& out, const Usage& usage) {
    out << "#compdef kvprobe\n\n_kvprobe() {\n  local -a commands options\n  commands=(\n";
    for (const CommandUsage& command : usage.commands) {
        out << "    " << Quoted(command.name + ":" + ZshText(command.summary)) << '\n';
    }
    out << "  )\n  case $words[2] in\n";
    // The first command is the one that is meant when none is given, so it comes last here.
    for (size_t i = 1; i <= usage.commands.size(); ++i) {
        const bool is_default = i == usage.commands.size();
        const CommandUsage& command = usage.commands[is_default ? 0 : i];
        out << "    (" << (is_default ? "*" : command.name) << ")\n      options=(\n";
        for (const OptionUsage& option : command.options) {
            for (const std::string& name : option.names) {
                std::ostringstream optspec;
                optspec << '*' << name << '[' << ZshText(option.description) << ']';
                if (option.value == "FILE") {
                    optspec << ":file:_files";
                } else if (!Words(option.value).empty()) {
                    optspec << ":value:(" << Words(option.value) << ')';
                } else if (!option.value.empty()) {
                    optspec << ':' << option.value << ": ";
                }
                out << "        " << Quoted(optspec.str()) << '\n';
            }
        }
        out << "      )\n      ;;\n";
    }
    out << "  esac\n"
           "  if ((CURRENT == 2)) && [[ $PREFIX != -* ]]; then\n"
           "    _describe command commands\n"
           "    _files\n"
           "  else\n"
           "    _arguments $options '*:model:_files'\n"
           "  fi\n"
           "}\n\n"
           "_kvprobe \"$@\"\n";
}

void PrintFish(std::ostream& out, const Usage& usage) {
    out << "# fish completion for kvprobe\n";
    std::string others;
    for (const CommandUsage& command : usage.commands) {
        out << "complete -c kvprobe -n '__fish_is_first_token' -a " << command.name << " -d "
            << Quoted(command.summary) << '\n';
        if (&command != usage.commands.data()) {
            others += " " + command.name;
        }
    }
    for (const CommandUsage& command : usage.commands) {
        const bool is_default = &command == usage.commands.data();
        const std::string condition = is_default ? "not __fish_seen_subcommand_from" + others
                                                 : "__fish_seen_subcommand_from " + command.name;
        for (const OptionUsage& option : command.options) {
            out << "complete -c kvprobe -n " << Quoted(condition);
            for (const std::string& name : option.names) {
                out << (name.rfind("--", 0) == 0 ? " -l " + name.substr(2)
                                                 : " -s " + name.substr(1));
            }
            if (option.value == "FILE") {
                out << " -r -F";
            } else if (!Words(option.value).empty()) {
                out << " -x -a " << Quoted(Words(option.value));
            } else if (!option.value.empty()) {
                out << " -x";
            }
            out << " -d " << Quoted(option.description) << '\n';
        }
    }
}

}  // namespace

// Arguments: what is wanted, and the file to write.
int main(int argc, char** argv) {
    const struct {
        const char* name;
        void (*print)(std::ostream&, const Usage&);
    } kinds[] = {{"man", PrintManual}, {"bash", PrintBash}, {"zsh", PrintZsh}, {"fish", PrintFish}};
    for (const auto& kind : kinds) {
        if (argc == 3 && std::string(argv[1]) == kind.name) {
            std::ofstream out(argv[2]);
            kind.print(out, DescribeUsage());
            out.close();
            return out ? 0 : 2;
        }
    }
    std::cerr << "kvprobe_usage man|bash|zsh|fish FILE\n";
    return 2;
}
