// The script for PowerShell: a table of the words that can stand behind each command, and a block
// that looks into it. Its texts stand between marks where nothing is special to the shell.
#include "jighost/help/Completion.h"
#include "jighost/help/CompletionWords.h"

// Names of operations differ in their case alone: tables of the shell's own would not tell them
// apart. Where the block gives nothing, the shell completes file names.
static const char SCRIPT[] = R"(# Completion of jighost for PowerShell:
#   jighost completion powershell | Out-String | Invoke-Expression
Register-ArgumentCompleter -Native -CommandName jighost, jighost.exe -ScriptBlock {
    param($word, $line, $cursor)
    # A command's path, a word behind it, what stands behind that word, what the word means. "*" is
    # the command's argument; an operation has its fields behind it.
    $rows = @'
@ROWS@'@ -split '\r?\n' | ForEach-Object {
        $path, $text, $behind, $meaning = $_ -split "`t"
        [pscustomobject]@{ Path = $path; Word = $text; Behind = $behind; Meaning = $meaning }
    }
    $operations = $rows | Where-Object Path -ceq 'operation'
    $command = ''
    $operation = $null
    $before = $null
    foreach ($element in $line.CommandElements | Select-Object -Skip 1) {
        if ($element.Extent.EndOffset -ge $cursor) { break }
        $text = $element.Extent.Text
        $before = $rows | Where-Object { $_.Path -ceq $command -and $_.Word -ceq $text }
        if ($before -and -not $text.StartsWith('-')) { $command += "/$text" }
        if (-not $operation) { $operation = $operations | Where-Object Word -ceq $text }
    }
    $here = $rows | Where-Object Path -ceq $command
    $behind = ($here | Where-Object Word -ceq '*').Behind
    $isValue = $before -and $before.Word.StartsWith('-') -and $before.Behind
    if ($isValue) { $behind = $before.Behind }
    if ($word.StartsWith('-') -and -not $isValue) {
        $found = $here | Where-Object { $_.Word.StartsWith('-') }
    } elseif ($behind -ceq 'field' -and $operation) {
        $found = $operation.Behind -split ' ' | ForEach-Object {
            [pscustomobject]@{ Word = $_; Meaning = $_ }
        }
    } elseif ($behind -ceq 'field' -or ($behind -ceq 'operation' -and -not $operation)) {
        $found = $operations
    } elseif ($behind) {
        $found = @()
    } else {
        $found = $here | Where-Object { -not $_.Word.StartsWith('-') }
    }
    $found | Where-Object { $_.Word -and $_.Word.StartsWith($word, 'Ordinal') } | ForEach-Object {
        [System.Management.Automation.CompletionResult]::new(
            $_.Word, $_.Word, 'ParameterValue', $_.Meaning)
    }
}
)";

static std::string Row(
    const std::string& path, const std::string& word, const std::string& behind,
    const std::string& meaning) {
    return path + '\t' + word + '\t' + behind + '\t' + Filled(meaning, {{"\n", " "}}) + '\n';
}

static std::string Behind(const OPTION_TEXT& option) {
    return option.TakesOperation() ? "operation" : option.TakesField() ? "field" : "file";
}

static std::string CommandRows(const std::string& path, const COMMAND_TEXT& command) {
    std::string rows;
    for (const OPTION_TEXT& option : command.options) {
        const std::string behind = option.TakesValue() ? Behind(option) : "";
        rows += Row(path, option.names.back(), behind, option.text);
    }
    // The fields bring the operations with them.
    if (!command.arguments.empty()) {
        rows += Row(path, "*", Behind(command.arguments.back()), "");
    }
    for (const COMMAND_TEXT& each : command.commands) {
        rows += Row(path, each.name, "", each.description);
    }
    return rows;
}

std::string PowerShellCompletion(const COMMAND_TEXT& program) {
    std::string rows;
    VisitCommands(program, [&](const std::string& path, const COMMAND_TEXT& command) {
        rows += CommandRows(path, command);
    });
    for (const std::string& name : OperationNames()) {
        const OPERATION_INFO& info = *FindOperation(name);
        rows += Row("operation", name, FieldWords(*info.record), info.description);
    }
    return Filled(SCRIPT, {{"@ROWS@", rows}});
}
