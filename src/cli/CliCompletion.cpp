#include "cli/CliCompletion.h"

#include "cli/CliCommand.h"
#include "cli/CliManual.h"
#include "ops/OpsCommandTable.h"
#include "script/EngineOperations.h"

#include <sstream>

namespace {

// How many file names lead a synopsis ("IN OUT [--quality N] ..." has two).
int LeadingFiles(const char* synopsis) {
    std::istringstream words(synopsis);
    std::string word;
    int files = 0;
    while (words >> word && word.front() != '[' && word != "OP...") {
        ++files;
    }
    return files;
}

bool TakesOperations(const char* synopsis) {
    return std::string(synopsis).find("OP...") != std::string::npos;
}

std::string OperationNames() {
    std::string names;
    for (const OpsCommand& command : OpsCommands()) {
        names += std::string(command.cliName) + " ";
    }
    for (const EngineOperationDoc& doc : EngineOperationDocs()) {
        names += std::string(doc.name) + " ";
    }
    return names + "undo redo";
}

std::string CommandCases() {
    std::string cases;
    for (const CliCommand& command : CliCommands()) {
        std::string options;
        for (const std::string& option : OptionsOfCommand(command.synopsis)) {
            options += (options.empty() ? "" : " ") + option;
        }
        cases += "        " + std::string(command.name) + ") options=\"" + options +
                 "\"; files=" + std::to_string(LeadingFiles(command.synopsis)) +
                 (TakesOperations(command.synopsis) ? "; operations=\"$all_operations\"" : "") + " ;;\n";
    }
    return cases;
}

} // namespace

std::string BashCompletionScript() {
    std::string commands;
    for (const CliCommand& command : CliCommands()) {
        commands += std::string(" ") + command.name;
    }
    return "# bash completion for tamrick-cli, made by `tamrick-cli --bash-completion`.\n"
           "_tamrick_cli()\n"
           "{\n"
           "    # Words are split at blanks only, so that \"rotate=30\" stays one word.\n"
           "    local line=${COMP_LINE:0:COMP_POINT}\n"
           "    local -a words\n"
           "    read -ra words <<< \"$line\"\n"
           "    local cur=\"\"\n"
           "    [[ $line == *[![:space:]] ]] && cur=${words[${#words[@]}-1]} && unset "
           "'words[${#words[@]}-1]'\n"
           "    local count=${#words[@]}\n"
           "    COMPREPLY=()\n"
           "    if [ \"$count\" -eq 1 ]; then\n"
           "        COMPREPLY=($(compgen -W \"--help --version" +
           commands +
           "\" -- \"$cur\"))\n"
           "        return\n"
           "    fi\n"
           "    local all_operations=\"" +
           OperationNames() +
           "\"\n"
           "    local options=\"\" files=0 operations=\"\"\n"
           "    case ${words[1]} in\n" +
           CommandCases() +
           "        *) return ;;\n"
           "    esac\n"
           "    # An option's value comes next: nothing to offer.\n"
           "    [[ \" $options \" == *\" ${words[count-1]} \"* ]] && return\n"
           "    local i positional=0\n"
           "    for ((i = 2; i < count; i++)); do\n"
           "        if [[ ${words[i]} == --* ]]; then ((i++)); else ((positional++)); fi\n"
           "    done\n"
           "    if [[ $cur == -* ]]; then\n"
           "        COMPREPLY=($(compgen -W \"$options\" -- \"$cur\"))\n"
           "    elif [ \"$positional\" -lt \"$files\" ]; then\n"
           "        compopt -o filenames 2>/dev/null\n"
           "        COMPREPLY=($(compgen -f -- \"$cur\"))\n"
           "    else\n"
           "        COMPREPLY=($(compgen -W \"$operations\" -- \"$cur\"))\n"
           "    fi\n"
           "}\n"
           "complete -F _tamrick_cli tamrick-cli\n";
}
