# Completion of cadjobs for PowerShell. The candidates come from cadjobs itself: the first line says whether names of files or
# directories may follow as well (PowerShell offers them where there are no candidates), each other line is a candidate and its
# description.
Register-ArgumentCompleter -Native -CommandName cadjobs -ScriptBlock {
    param($wordToComplete, $commandAst, $cursorPosition)
    $words = @($commandAst.CommandElements | Select-Object -Skip 1 | Where-Object { $_.Extent.StartOffset -lt $cursorPosition } |
        ForEach-Object { if ($_ -is [System.Management.Automation.Language.StringConstantExpressionAst]) { $_.Value } else { $_.Extent.Text } })
    # An empty argument would get lost on its way to a program; a lone = stands for it.
    if ($wordToComplete -eq '') { $words += '=' }
    $lines = @(cadjobs complete '--' @words 2>$null)
    $lines | Select-Object -Skip 1 | ForEach-Object {
        $value, $description = $_ -split "`t", 2
        $text = if ($value -match '[\s,;''"|&()]') { "'" + $value.Replace("'", "''") + "'" } else { $value }
        if (-not $description) { $description = $value }
        [System.Management.Automation.CompletionResult]::new($text, $value, 'ParameterValue', $description)
    }
}
