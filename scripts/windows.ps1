# Not run yet: no machine with PowerShell has seen this script.
#
# Sets up vcpkg, then configures, builds, tests and packages with Visual Studio 2022. Continues after a
# failed test, and ends with a line and a time for each part. The logs are in build\logs.
#
#   powershell -ExecutionPolicy Bypass -File scripts\windows.ps1 [-Preset windows-msvc-debug]
param(
    [ValidateSet('windows-msvc', 'windows-msvc-debug')]
    [string]$Preset = 'windows-msvc'
)

Set-StrictMode -Version 2.0
$ErrorActionPreference = 'Stop'

$root = Split-Path -Parent $PSScriptRoot
Set-Location -LiteralPath $root
$logs = Join-Path $root 'build\logs'
$null = New-Item -ItemType Directory -Force -Path $logs
# A node of MSBuild that stays alive would keep the pipe to its log open.
$env:MSBUILDDISABLENODEREUSE = '1'

$summary = New-Object System.Collections.ArrayList
$failed = 0
$partStart = Get-Date

function Start-Part([string]$name) {
    $script:partStart = Get-Date
    Write-Host "test: $name"
}

function Complete-Part([string]$name, [string]$result, [bool]$passed) {
    $seconds = [int][Math]::Floor(((Get-Date) - $script:partStart).TotalSeconds)
    $minutes = [int][Math]::Floor($seconds / 60)
    $null = $script:summary.Add(('{0,3}:{1:00}  {2}: {3}' -f $minutes, ($seconds % 60), $name, $result))
    if (-not $passed) { $script:failed++ }
}

function Exit-WithSummary {
    Write-Host ''
    foreach ($line in $script:summary) { Write-Host "test: $line" }
    if ($script:failed -gt 0) {
        Write-Host "test: failed: $($script:failed) of $($script:summary.Count) parts"
        exit 1
    }
    Write-Host 'test: all passed'
    exit 0
}

# Ends the script with a message that says what is missing.
function Exit-WithError([string]$message) {
    Write-Host "test: $message"
    exit 1
}

# The exit code of a program whose output is written to a log, and shown if it fails. Windows PowerShell
# makes an error record of each line on standard error, which must not end the script.
function Invoke-Logged([string]$log, [string]$program, [string[]]$arguments) {
    $ErrorActionPreference = 'Continue'
    $path = Join-Path $script:logs $log
    & $program $arguments 2>&1 | ForEach-Object { "$_" } | Out-File -LiteralPath $path -Encoding utf8
    $code = $LASTEXITCODE
    if ($code -ne 0) { Get-Content -LiteralPath $path -Tail 200 | Out-Host }
    return $code
}

# The path of a program that is in PATH, or in one of the folders given.
function Find-Program([string]$name, [string[]]$folders) {
    $command = Get-Command $name -CommandType Application -ErrorAction SilentlyContinue | Select-Object -First 1
    if ($null -ne $command) { return $command.Path }
    foreach ($folder in $folders) {
        $path = Join-Path $folder $name
        if (Test-Path -LiteralPath $path) { return $path }
    }
    return $null
}

Start-Part 'setup'
$vswhere = Join-Path ${env:ProgramFiles(x86)} 'Microsoft Visual Studio\Installer\vswhere.exe'
$studio = $null
if (Test-Path -LiteralPath $vswhere) {
    $studio = & $vswhere -latest -products * -version '[17.0,18.0)' `
        -requires Microsoft.VisualStudio.Component.VC.Tools.x86.x64 -property installationPath |
        Select-Object -First 1
}
if (-not $studio) {
    Exit-WithError 'Visual Studio 2022 with the workload "Desktop development with C++" is missing'
}
$extensions = Join-Path $studio 'Common7\IDE\CommonExtensions\Microsoft'

$git = Find-Program 'git.exe' @((Join-Path $extensions 'TeamFoundation\Team Explorer\Git\cmd'))
if (-not $git) { Exit-WithError 'git is missing: install Git for Windows' }

$cmake = Find-Program 'cmake.exe' @((Join-Path $extensions 'CMake\CMake\bin'))
if (-not $cmake) { Exit-WithError 'CMake 3.25 or newer is missing' }
$cmakeVersion = [string](& $cmake --version | Select-Object -First 1)
if ($cmakeVersion -notmatch '(\d+\.\d+)\.\d+' -or [version]$Matches[1] -lt [version]'3.25') {
    Exit-WithError "CMake 3.25 or newer is needed, $cmake is: $cmakeVersion"
}
# Those beside that CMake: other programs are named cpack too.
$ctest = Join-Path (Split-Path -Parent $cmake) 'ctest.exe'
$cpack = Join-Path (Split-Path -Parent $cmake) 'cpack.exe'

# The copy that Visual Studio brings is no clone, so it lacks the history with the pinned versions.
$vcpkg = $env:VCPKG_ROOT
if (-not $vcpkg -or -not (Test-Path -LiteralPath (Join-Path $vcpkg '.git'))) {
    $vcpkg = Join-Path $root 'build\vcpkg'
    if (-not (Test-Path -LiteralPath (Join-Path $vcpkg '.git'))) {
        $code = Invoke-Logged 'vcpkg.clone' $git @('clone', 'https://github.com/microsoft/vcpkg', $vcpkg)
        if ($code -ne 0) { Exit-WithError 'vcpkg cannot be cloned' }
    }
}
$env:VCPKG_ROOT = $vcpkg
$baseline = (Get-Content -Raw -LiteralPath 'vcpkg.json' | ConvertFrom-Json).'builtin-baseline'
$shallow = & $git -C $vcpkg rev-parse --is-shallow-repository
if ($shallow -eq 'true') {
    $code = Invoke-Logged 'vcpkg.fetch' $git @('-C', $vcpkg, 'fetch', '--unshallow')
    if ($code -ne 0) { Exit-WithError 'the history of vcpkg cannot be fetched' }
}
if ((Invoke-Logged 'vcpkg.baseline' $git @('-C', $vcpkg, 'cat-file', '-e', $baseline)) -ne 0) {
    $code = Invoke-Logged 'vcpkg.fetch' $git @('-C', $vcpkg, 'fetch', 'origin')
    if ($code -ne 0) { Exit-WithError 'the history of vcpkg cannot be fetched' }
}
if (-not (Test-Path -LiteralPath (Join-Path $vcpkg 'vcpkg.exe'))) {
    $bootstrap = Join-Path $vcpkg 'bootstrap-vcpkg.bat'
    if ((Invoke-Logged 'vcpkg.bootstrap' $bootstrap @('-disableMetrics')) -ne 0) {
        Exit-WithError 'vcpkg cannot be built'
    }
}
Complete-Part 'setup' 'done' $true

Start-Part "${Preset}: building"
# A failed run of vcpkg is in this log too: CMake runs it.
if ((Invoke-Logged "$Preset.configure" $cmake @('--preset', $Preset)) -ne 0) {
    Complete-Part "$Preset, build" 'cannot be configured' $false
    Exit-WithSummary
}
if ((Invoke-Logged "$Preset.build" $cmake @('--build', '--preset', $Preset, '--parallel')) -ne 0) {
    Complete-Part "$Preset, build" 'failed' $false
    Exit-WithSummary
}
Complete-Part "$Preset, build" 'passed' $true

Start-Part "${Preset}: testing"
$code = Invoke-Logged "$Preset.test" $ctest @('--preset', $Preset, '--no-tests=error')
$line = Select-String -LiteralPath (Join-Path $logs "$Preset.test") -Pattern '% tests passed' |
    Select-Object -First 1
$result = 'no test was run'
if ($null -ne $line) { $result = $line.Line }
if ($code -eq 0) { $result = "passed, $result" }
Complete-Part "$Preset, tests" $result ($code -eq 0)

# Only a release build is shipped.
if ($Preset -eq 'windows-msvc') {
    Start-Part "${Preset}: packaging"
    if ((Invoke-Logged "$Preset.package" $cpack @('--preset', $Preset)) -eq 0) {
        Complete-Part "$Preset, package" 'passed' $true
    } else {
        Complete-Part "$Preset, package" 'failed' $false
    }
}
Exit-WithSummary
