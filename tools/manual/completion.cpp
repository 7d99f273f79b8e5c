// Completion scripts: the same three questions for each shell. Which commands are there, which options has this one, and
// what may stand after this option?
#include "failure.h"
#include "manual/manual.h"

#include <functional>

namespace host
{
namespace
{
using Families = std::vector<DescribedFamily>;

std::string joined(const std::vector<std::string>& words, const char* separator = " ")
{
    std::string text;
    for (const std::string& word : words)
        text += (text.empty() ? "" : separator) + word;
    return text;
}

void forEachCommand(const Families& families, const std::function<void(const DescribedCommand&)>& visit)
{
    for (const DescribedFamily& family : families)
        for (const DescribedCommand& command : family.commands)
            visit(command);
}

// The text with a backslash before each of these characters.
std::string escaped(const std::string& text, const std::string& characters)
{
    std::string safe;
    for (char c : text)
        safe += (characters.find(c) == std::string::npos ? "" : "\\") + std::string(1, c);
    return safe;
}

// Between single quotes, for bash and zsh.
std::string quoted(const std::string& text)
{
    std::string safe = "'";
    for (char c : text)
        safe += c == '\'' ? "'\\''" : std::string(1, c);
    return safe + "'";
}

std::string bash(const Families& families)
{
    std::string names, cases;
    forEachCommand(families, [&](const DescribedCommand& command) {
        std::string options, values;
        names += " " + command.name;
        for (const DescribedOption& option : command.options) {
            if (option.isPositional())
                continue;
            options += " " + joined(option.names);
            if (!option.form.empty() && !option.takesFile())
                values +=
                    "        " + joined(option.names, " | ") + ") words=" + quoted(joined(option.words())) + " ;;\n";
        }
        cases += "    " + command.name + ")\n        options=" + quoted(options.substr(1)) + "\n" +
                 (values.empty() ? "" : "        case $before in\n" + values + "        esac\n") + "        ;;\n";
    });
    return R"(# Completion of lumivex for bash.
_lumivex()
{
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} options='' words
    case ${COMP_WORDS[1]} in
)" + cases +
           R"(    esac
    COMPREPLY=()
    if [ "$COMP_CWORD" -eq 1 ]; then
        words=')" +
           names.substr(1) + R"( --help --version'
    elif [ -z "${words+set}" ] && [[ $word == -* ]]; then
        words=$options
    fi
    if [ -n "${words+set}" ]; then
        mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
    else
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -f -- "$word")
    fi
}
complete -F _lumivex lumivex
)";
}

std::string zsh(const Families& families)
{
    const auto said = [](const std::string& text) { return escaped(text, "\\[]:"); };
    std::string names, cases;
    forEachCommand(families, [&](const DescribedCommand& command) {
        names += "        " + quoted(escaped(command.name, ":") + ":" + command.summary) + "\n";
        cases += "    " + command.name + ") _arguments";
        for (const DescribedOption& option : command.options) {
            const std::string action = option.takesFile() ? "_files" : "(" + joined(option.words()) + ")";
            cases += " \\\n        ";
            if (option.isPositional()) {
                cases += quoted("*:" + said(option.names.front()) + ":_files");
                continue;
            }
            const std::string value = option.form.empty() ? "" : ":" + said(option.form) + ":" + action;
            const std::string rest = quoted("[" + said(option.help) + "]" + value);
            cases += option.names.size() == 1
                         ? option.names.front() + rest
                         : quoted("(" + joined(option.names) + ")") + "{" + joined(option.names, ",") + "}" + rest;
        }
        cases += " ;;\n";
    });
    return "#compdef lumivex\n# Completion of lumivex for zsh.\n_lumivex()\n{\n    local -a commands=(\n" + names +
           R"(    )
    if ((CURRENT == 2)); then
        _describe command commands
        return
    fi
    shift words
    ((CURRENT--))
    case $words[1] in
)" + cases +
           "    esac\n}\n_lumivex \"$@\"\n";
}

std::string fish(const Families& families)
{
    const auto said = [](const std::string& text) { return "'" + escaped(text, "\\'") + "'"; };
    std::string script = "# Completion of lumivex for fish.\n";
    forEachCommand(families, [&](const DescribedCommand& command) {
        script += "complete -c lumivex -n __fish_use_subcommand -x -a " + command.name + " -d " + said(command.summary);
        script += "\n";
        for (const DescribedOption& option : command.options) {
            if (option.isPositional())
                continue;
            script += "complete -c lumivex -n '__fish_seen_subcommand_from " + command.name + "'";
            for (const std::string& name : option.names)
                script += name[1] == '-' ? " -l " + name.substr(2) : " -s " + name.substr(1);
            if (option.takesFile())
                script += " -r";
            else if (!option.form.empty())
                script += " -x -a " + said(joined(option.words()));
            script += " -d " + said(option.help) + "\n";
        }
    });
    return script;
}
} // namespace

std::string completionScript(const std::string& shell, const Families& families)
{
    if (shell == "bash")
        return bash(families);
    if (shell == "zsh")
        return zsh(families);
    if (shell == "fish")
        return fish(families);
    throw UsageError("no completion for '" + shell + "'; there is one for bash, zsh and fish");
}
} // namespace host
