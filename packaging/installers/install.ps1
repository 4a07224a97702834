<#
.SYNOPSIS
Installs what lies beside this script into the workstation's resource folder, or removes it.

.DESCRIPTION
Does what `felspar install` and `felspar uninstall` do and keeps the same list. For Windows PowerShell 5.1 and later:

    powershell -ExecutionPolicy Bypass -File install.ps1

The exit status is 1 if a file was kept back or something failed.

.PARAMETER ResourcePath
The workstation's resource folder, when it is not in its usual place.

.PARAMETER Uninstall
Remove what was installed.

.PARAMETER Replace
Also install in place of files that are not ours or were changed; they are moved aside.

.PARAMETER DryRun
Only show what would be done.
#>
[CmdletBinding(PositionalBinding = $false)] # otherwise a misspelt option is passed over
param(
    [string]$ResourcePath = '',
    [switch]$Uninstall,
    [switch]$Replace,
    [switch]$DryRun
)
Set-StrictMode -Version 2
$ErrorActionPreference = 'Stop'

$listPath = 'Scripts/MERIDEK_FELSPAR/installed.txt'
$listHead = '# MERIDEK_FELSPAR: installed files with their SHA-256 sums'
$folderMark = '# folder '
$sumDigits = 64
$setAsideSuffix = '.felspar-old'

function Stop-Installation([string]$Message) {
    [Console]::Error.WriteLine("install.ps1: $Message")
    exit 1
}

# The reason, without what PowerShell puts around it.
function Get-Reason([Management.Automation.ErrorRecord]$Failure) {
    return $Failure.Exception.GetBaseException().Message
}

trap { Stop-Installation (Get-Reason $_) }

# In the order of their bytes, each once.
function Get-Sorted([string[]]$Texts) {
    $sorted = [string[]]@($Texts | Select-Object -Unique)
    [Array]::Sort($sorted, [StringComparer]::Ordinal)
    $sorted
}

# --- The workstation's resource folder

function Find-ResourceFolders {
    if ($env:APPDATA) {
        $own = Join-Path $env:APPDATA 'REAPER'
        if (Test-Path -LiteralPath $own -PathType Container) { $own }
    }
    if ($env:ProgramFiles) {
        foreach ($name in 'REAPER (x64)', 'REAPER') {
            $program = Join-Path $env:ProgramFiles $name
            # A portable installation keeps its settings beside the program.
            if (Test-Path -LiteralPath (Join-Path $program 'reaper.ini') -PathType Leaf) { $program }
        }
    }
}

# That of the program that saved the last project; empty if that is not known.
function Get-WorkstationVersion([string]$Folder) {
    try {
        $inside = $false
        foreach ($line in [IO.File]::ReadAllLines((Join-Path $Folder 'reaper.ini'))) {
            if ($line.StartsWith('[')) { $inside = $line.Trim() -eq '[REAPER]' }
            if ($inside -and $line -match '^lastproject=(.+)$') {
                $head = Get-Content -LiteralPath $Matches[1].Trim() -TotalCount 1
                if ($head -match '^<REAPER_PROJECT [^"]*"([^"/]*)["/]') { return $Matches[1] }
                return ''
            }
        }
    } catch {
        Write-Verbose $_.Exception.Message # there are no settings, or no such project
    }
    return ''
}

function Get-Sws([string]$Folder) {
    $plugins = Join-Path $Folder 'UserPlugins'
    if (-not (Test-Path -LiteralPath $plugins -PathType Container)) { return '' }
    $found = @(Get-ChildItem -LiteralPath $plugins -Filter 'reaper_sws*' | Sort-Object -Property Name)
    if ($found.Count -eq 0) { return '' }
    return $found[0].Name
}

# --- Files

function Get-FullPath([string]$Path) { return [IO.Path]::Combine($resources, $Path.Replace('/', '\')) }

function Get-Sum([string]$File) {
    $algorithm = [Security.Cryptography.SHA256]::Create()
    $stream = [IO.File]::OpenRead($File)
    try { $bytes = $algorithm.ComputeHash($stream) } finally { $stream.Dispose() }
    return [BitConverter]::ToString($bytes).Replace('-', '').ToLowerInvariant()
}

function Test-IsLink([string]$Path) {
    return ([IO.File]::GetAttributes($Path) -band [IO.FileAttributes]::ReparsePoint) -ne 0
}

# What is at a path: nothing, "other" for a link or a folder, otherwise the file's sum.
function Get-Present([string]$File) {
    if (-not (Test-Path -LiteralPath $File)) { return '' }
    $item = Get-Item -LiteralPath $File -Force
    if ($item.PSIsContainer -or $item.LinkType -eq 'SymbolicLink') { return 'other' }
    return Get-Sum $File
}

function Get-FreeName([string]$Path) {
    $name = "$Path.saved"
    for ($number = 2; Test-Path -LiteralPath (Get-FullPath $name); $number++) { $name = "$Path.saved-$number" }
    return $name
}

# Also if it may only be read.
function Remove-File([string]$File) {
    if (-not (Test-Path -LiteralPath $File -PathType Leaf)) { return }
    [IO.File]::SetAttributes($File, [IO.FileAttributes]::Normal)
    [IO.File]::Delete($File)
}

# What an earlier run moved aside while the workstation had it loaded.
function Remove-SetAside([string]$File) { Remove-File ($File + $setAsideSuffix) }

# The complete bytes get the name. A library that the workstation has loaded cannot be replaced or removed, but it
# can be renamed; what was renamed goes as soon as nobody has it loaded.
function Write-Bytes([byte[]]$Bytes, [string]$File) {
    $temporary = Join-Path ([IO.Path]::GetDirectoryName($File)) ".felspar-$PID-0.tmp"
    try {
        [IO.File]::WriteAllBytes($temporary, $Bytes)
        if (-not (Test-Path -LiteralPath $File)) {
            [IO.File]::Move($temporary, $File)
            return
        }
        try {
            [IO.File]::SetAttributes($File, [IO.FileAttributes]::Normal)
            [IO.File]::Replace($temporary, $File, [NullString]::Value)
            return
        } catch {
            Write-Verbose "$File is in use"
        }
        $old = $File + $setAsideSuffix
        try {
            Remove-SetAside $File
        } catch {
            throw "$File is in use, as is its older version: close the workstation ($(Get-Reason $_))"
        }
        [IO.File]::Move($File, $old)
        try {
            [IO.File]::Move($temporary, $File)
        } catch {
            [IO.File]::Move($old, $File)
            throw
        }
        try { [IO.File]::Delete($old) } catch { Write-Verbose "$old is in use" }
    } finally {
        if (Test-Path -LiteralPath $temporary) { [IO.File]::Delete($temporary) }
    }
}

# What killed writers left: files .felspar-PROCESS-NUMBER.tmp whose process has gone.
function Remove-Abandoned {
    $running = @(Get-Process | ForEach-Object { "$($_.Id)" })
    foreach ($folder in 'UserPlugins', 'Scripts/MERIDEK_FELSPAR', 'Scripts/MERIDEK_FELSPAR/stubs') {
        $path = Get-FullPath $folder
        if (-not (Test-Path -LiteralPath $path -PathType Container)) { continue }
        foreach ($file in @(Get-ChildItem -LiteralPath $path -Filter '.felspar-*.tmp' -File)) {
            $writer = $file.Name -replace '^\.felspar-([0-9]+)-[0-9]+\.tmp$', '$1'
            if ($writer -eq $file.Name -or $running -contains $writer) { continue }
            try { [IO.File]::Delete($file.FullName) } catch { Write-Verbose "$($file.FullName) is in use" }
        }
    }
}

function Remove-Installed([string]$File) {
    try {
        Remove-File $File
    } catch {
        throw "$File cannot be removed; close the workstation first ($(Get-Reason $_))"
    }
}

# --- The list of what was installed: lines "SUM  PATH" and "# folder PATH"

# Each path in one spelling only, or one file would count as two.
function Test-StaysInside([string]$Path) {
    $odd = @($Path.Split('/') | Where-Object { '', '.', '..' -contains $_ })
    return $odd.Count -eq 0 -and $Path -notmatch '[\\:|\x00-\x1f\x7f]'
}

# Sums by path, and folders.
function Read-List {
    $list = @{ Files = @{}; Folders = @(); IsThere = $false }
    $file = Get-FullPath $listPath
    if (-not (Test-Path -LiteralPath $file)) { return $list }
    if (-not (Test-Path -LiteralPath $file -PathType Leaf)) { throw "${file}: is not a file" }
    $list.IsThere = $true
    $number = 0
    $lines = [IO.File]::ReadAllLines($file)
    if ($lines.Count -eq 0 -or $lines[0] -cne $listHead) { throw "${file}: line 1 is damaged" }
    foreach ($line in $lines) {
        $number++
        $path = ''
        if ($line.StartsWith($folderMark)) {
            $path = $line.Substring($folderMark.Length)
            $list.Folders += $path
        } elseif ($line -eq '' -or $line.StartsWith('#')) {
            continue
        } elseif ($line -cmatch '^[0-9a-f]{64}  .') {
            $path = $line.Substring($sumDigits + 2)
            if (-not $list.Files.ContainsKey($path)) { $list.Files[$path] = @() }
            $list.Files[$path] += $line.Substring(0, $sumDigits)
        }
        if (-not (Test-StaysInside $path)) { throw "${file}: line $number is damaged" }
    }
    return $list
}

function Write-List([hashtable]$Files, [string[]]$Folders) {
    $lines = @($listHead)
    foreach ($folder in @(Get-Sorted $Folders)) { $lines += $folderMark + $folder }
    foreach ($path in @(Get-Sorted @($Files.Keys))) {
        foreach ($sum in @(Get-Sorted @($Files[$path]))) { $lines += "$sum  $path" }
    }
    $text = [string]::Join("`n", $lines) + "`n"
    Write-Bytes ([Text.Encoding]::UTF8.GetBytes($text)) (Get-FullPath $listPath)
}

# --- The steps

# A filter would also find names that only begin like this.
function Get-LuaFiles([string]$Folder) {
    Get-ChildItem -LiteralPath $Folder -File | Where-Object { $_.Extension -eq '.lua' }
}

# Files by the paths at which they are to be installed.
function Get-PackageFiles {
    $plugin = Join-Path $PSScriptRoot 'reaper_MERIDEK_FELSPAR.dll'
    $scripts = Join-Path $PSScriptRoot 'scripts\lua'
    $stubs = Join-Path $PSScriptRoot 'stubs'
    $isWhole = (Test-Path -LiteralPath $plugin -PathType Leaf) -and
        (Test-Path -LiteralPath $scripts -PathType Container) -and (Test-Path -LiteralPath $stubs -PathType Container)
    if (-not $isWhole) {
        throw 'the library and the folders scripts and stubs are not beside this script: unpack the whole archive'
    }
    $package = @{ 'UserPlugins/reaper_MERIDEK_FELSPAR.dll' = $plugin }
    foreach ($file in @(Get-LuaFiles $scripts)) { $package['Scripts/MERIDEK_FELSPAR/' + $file.Name] = $file.FullName }
    foreach ($file in @(Get-LuaFiles $stubs)) {
        $package['Scripts/MERIDEK_FELSPAR/stubs/' + $file.Name] = $file.FullName
    }
    return $package
}

function Get-ReasonToKeep([string]$Path, [string]$Present) {
    if ($Present -eq 'other') { return 'it is a link or a folder' }
    if (-not $list.Files.ContainsKey($Path)) { return 'it was not installed by this program' }
    if ($list.Files[$Path] -notcontains $Present) { return 'it has been changed since it was installed' }
    return ''
}

# What is to be done at a path; nothing if nothing is.
function Get-Step([string]$Path) {
    $step = @{ Path = $Path; Action = 'installed'; Source = ''; Sum = ''; SavedAs = ''; Reason = '' }
    if ($package.ContainsKey($Path)) {
        $step.Source = $package[$Path]
        $step.Sum = Get-Sum $step.Source
    }
    $present = Get-Present (Get-FullPath $Path)
    if ($present -eq '') {
        if ($step.Source -ne '') { return $step }
        return
    }
    $reason = Get-ReasonToKeep $Path $present
    if ($present -eq $step.Sum) {
        $step.Action = 'unchanged'
    } elseif ($reason -eq '') {
        if ($step.Source -ne '') { $step.Action = 'replaced' } else { $step.Action = 'removed' }
    } elseif ($step.Source -ne '' -and $Replace) {
        $step.Action = 'replaced'
        $step.SavedAs = Get-FreeName $Path
    } else {
        $step.Action = 'kept'
        $step.Reason = $reason
    }
    return $step
}

# Sums by path once the steps are done.
function Get-FilesAfter([object[]]$Steps) {
    $files = @{}
    foreach ($step in $Steps) {
        $isListed = $list.Files.ContainsKey($step.Path)
        $isWritten = $step.Action -eq 'installed' -or $step.Action -eq 'replaced'
        if ($isWritten -or ($step.Action -eq 'unchanged' -and $isListed)) {
            $files[$step.Path] = @($step.Sum)
        } elseif ($step.Action -eq 'kept' -and $step.Source -ne '' -and $isListed) {
            $files[$step.Path] = @($list.Files[$step.Path])
        }
    }
    return $files
}

# Makes the folders that a path lies in; gives those that had to be made.
function New-FoldersOf([string]$Path) {
    $made = ''
    $parts = $Path.Split('/')
    for ($i = 0; $i -lt $parts.Count - 1; $i++) {
        if ($made -ne '') { $made += '/' }
        $made += $parts[$i]
        if (-not (Test-Path -LiteralPath (Get-FullPath $made) -PathType Container)) {
            [void][IO.Directory]::CreateDirectory((Get-FullPath $made))
            $made
        }
    }
}

function Invoke-Steps([object[]]$Steps) {
    foreach ($step in $Steps) {
        $file = Get-FullPath $step.Path
        if ($step.SavedAs -ne '') { Move-Item -LiteralPath $file -Destination (Get-FullPath $step.SavedAs) }
        if ($step.Action -eq 'removed') {
            Remove-Installed $file
        } elseif ($step.Action -eq 'installed' -or $step.Action -eq 'replaced') {
            Write-Bytes ([IO.File]::ReadAllBytes($step.Source)) $file
        }
    }
}

# What came from the internet is marked, and a file keeps its mark when its bytes are replaced. Files that were kept
# keep theirs.
function Remove-Marks([object[]]$Steps) {
    foreach ($step in $Steps) {
        if ($step.Action -eq 'kept' -or $step.Source -eq '') { continue }
        Unblock-File -LiteralPath (Get-FullPath $step.Path) -ErrorAction SilentlyContinue
    }
}

# What is to be done is listed first, so an installation that was cut off can be repeated or removed.
function Install-Steps([object[]]$Steps) {
    $files = Get-FilesAfter $Steps
    $folders = @($list.Folders)
    foreach ($path in @($files.Keys) + $listPath) { $folders += @(New-FoldersOf $path) }
    $underWay = @{}
    foreach ($path in @($files.Keys)) { $underWay[$path] = @($files[$path]) }
    foreach ($path in @($list.Files.Keys)) {
        if (-not $underWay.ContainsKey($path)) { $underWay[$path] = @() }
        $underWay[$path] += $list.Files[$path]
    }
    Write-List $underWay $folders
    Invoke-Steps $Steps
    Remove-Marks $Steps
    Write-List $files $folders
    foreach ($path in @($underWay.Keys)) {
        try { Remove-SetAside (Get-FullPath $path) } catch { Write-Verbose "the older version of $path is in use" }
    }
}

function Uninstall-Steps([object[]]$Steps) {
    Invoke-Steps $Steps
    foreach ($path in @($list.Files.Keys)) { Remove-Installed ((Get-FullPath $path) + $setAsideSuffix) }
    Remove-Installed (Get-FullPath $listPath)
    $folders = @(Get-Sorted $list.Folders)
    [Array]::Reverse($folders) # the inner ones first
    foreach ($folder in $folders) {
        try {
            $path = Get-FullPath $folder
            # A link to a folder would be removed even if there is something in that.
            if (-not (Test-IsLink $path)) { [IO.Directory]::Delete($path) }
        } catch {
            Write-Verbose "$folder is not empty"
        }
    }
}

# --- What is shown

function Show-Found {
    "Resource folder: $resources"
    foreach ($other in $others) { "There is also $other; -ResourcePath names the one to use." }
    $version = Get-WorkstationVersion $resources
    $known = 'version not known'
    if ($version -ne '') { $known = "version $version saved the last project" }
    "Workstation: $known"
    $sws = Get-Sws $resources
    if ($sws -eq '') { $sws = 'not there; the ride and the loudness functions need it' }
    "SWS extension: $sws"
}

function Show-Step([hashtable]$Step) {
    $line = '  {0,-10}{1}' -f $Step.Action, $Step.Path
    if ($Step.Reason -ne '') { $line += ': ' + $Step.Reason }
    if ($Step.SavedAs -ne '') { $line += ', the file that was there is now ' + $Step.SavedAs }
    $line
}

$resources = $ResourcePath
$others = @()
if ($resources -eq '') {
    $found = @(Find-ResourceFolders)
    if ($found.Count -eq 0) {
        Stop-Installation ("the workstation's resource folder was not found: start the workstation once, " +
            'or name the folder with -ResourcePath')
    }
    $resources = $found[0]
    $others = @($found | Select-Object -Skip 1)
}
if (-not (Test-Path -LiteralPath $resources -PathType Container)) { Stop-Installation "${resources}: is not a folder" }
$resources = (Resolve-Path -LiteralPath $resources).ProviderPath

$package = @{}
if (-not $Uninstall) { $package = Get-PackageFiles }
$list = Read-List
$steps = @()
foreach ($path in @(Get-Sorted (@($package.Keys) + @($list.Files.Keys)))) { $steps += @(Get-Step $path) }
if (-not $DryRun) {
    Remove-Abandoned
    if (-not $Uninstall) { Install-Steps $steps } elseif ($list.IsThere) { Uninstall-Steps $steps }
}
$kept = @($steps | Where-Object { $_.Action -eq 'kept' }).Count -gt 0

Show-Found
foreach ($step in $steps) { Show-Step $step }
if ($Uninstall -and $steps.Count -eq 0) { 'Nothing is installed there.' }
if (-not $Uninstall -and $kept) {
    'To install in place of files that were kept, add -Replace: they are moved aside.'
}
if ($DryRun) {
    'Nothing was written.'
} elseif (-not $Uninstall) {
    'The workstation loads the library when it is next started.'
}
if ($kept) { exit 1 }
exit 0
