<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>AboutDialog</name>
    <message>
        <source>Sandbox host of AIBridge (zorhost)</source>
        <translation>Sandbox host of AIBridge (zorhost)</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>Version</translation>
    </message>
    <message>
        <source>Disks</source>
        <translation>Disks</translation>
    </message>
    <message>
        <source>Real: orders change the disks and images of the command line.</source>
        <translation>Real: orders change the disks and images of the command line.</translation>
    </message>
    <message>
        <source>Simulated: no disk of the computer is changed.</source>
        <translation>Simulated: no disk of the computer is changed.</translation>
    </message>
    <message>
        <source>Libraries</source>
        <translation>Libraries</translation>
    </message>
    <message>
        <source>Qt %1, Apache Thrift %2</source>
        <translation>Qt %1, Apache Thrift %2</translation>
    </message>
    <message>
        <source>Licence</source>
        <translation>Licence</translation>
    </message>
    <message>
        <source>No licence is given.</source>
        <translation>No licence is given.</translation>
    </message>
</context>
<context>
    <name>ActivityPane</name>
    <message>
        <source>Log</source>
        <translation>Log</translation>
    </message>
    <message>
        <source>Agent</source>
        <translation>Agent</translation>
    </message>
    <message numerus="yes">
        <source>%n entry(s)</source>
        <translation>
            <numerusform>%n entry</numerusform>
            <numerusform>%n entries</numerusform>
        </translation>
    </message>
    <message>
        <source>Show agent</source>
        <translation>Show agent</translation>
    </message>
    <message>
        <source>Show log</source>
        <translation>Show log</translation>
    </message>
    <message>
        <source>Only drive %1: show all</source>
        <translation>Only drive %1: show all</translation>
    </message>
</context>
<context>
    <name>ClientList</name>
    <message>
        <source>since %1</source>
        <comment>time of day</comment>
        <translation>since %1</translation>
    </message>
    <message numerus="yes">
        <source>%n call(s)</source>
        <translation>
            <numerusform>%n call</numerusform>
            <numerusform>%n calls</numerusform>
        </translation>
    </message>
    <message>
        <source>No client is connected.</source>
        <translation>No client is connected.</translation>
    </message>
</context>
<context>
    <name>ConfirmationDialog</name>
    <message>
        <source>Change the disk</source>
        <translation>Change the disk</translation>
    </message>
    <message>
        <source>Do not change</source>
        <translation>Do not change</translation>
    </message>
</context>
<context>
    <name>DiskCard</name>
    <message>
        <source>Empty</source>
        <translation>Empty</translation>
    </message>
</context>
<context>
    <name>DiskPane</name>
    <message>
        <source>The machine has no disks.</source>
        <translation>The machine has no disks.</translation>
    </message>
    <message>
        <source>The disk has no known partition.</source>
        <translation>The disk has no known partition.</translation>
    </message>
    <message>
        <source>No disk matches the search.</source>
        <translation>No disk matches the search.</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 of %2</translation>
    </message>
    <message>
        <source>Compact</source>
        <translation>Compact</translation>
    </message>
    <message>
        <source>Disks</source>
        <translation>Disks</translation>
    </message>
</context>
<context>
    <name>GuidePane</name>
    <message>
        <source>Start</source>
        <translation>Start</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Close</translation>
    </message>
</context>
<context>
    <name>Header</name>
    <message>
        <source>service is starting</source>
        <translation>service is starting</translation>
    </message>
    <message>
        <source>agent service on %1</source>
        <translation>agent service on %1</translation>
    </message>
    <message>
        <source>busy: %1</source>
        <translation>busy: %1</translation>
    </message>
    <message>
        <source>dialog open</source>
        <translation>dialog open</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>Language</translation>
    </message>
    <message>
        <source>Scan now</source>
        <translation>Scan now</translation>
    </message>
    <message>
        <source>The machine has no name.</source>
        <translation>The machine has no name.</translation>
    </message>
</context>
<context>
    <name>HeaderMenu</name>
    <message>
        <source>Colours of the system</source>
        <translation>Colours of the system</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>Light</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>Dark</translation>
    </message>
    <message>
        <source>Menu</source>
        <translation>Menu</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>Keys</translation>
    </message>
    <message>
        <source>About</source>
        <translation>About</translation>
    </message>
</context>
<context>
    <name>HelpDialog</name>
    <message>
        <source>Keys</source>
        <translation>Keys</translation>
    </message>
    <message>
        <source>Tab, Shift+Tab</source>
        <translation>Tab, Shift+Tab</translation>
    </message>
    <message>
        <source>Next part of the window, previous part.</source>
        <translation>Next part of the window, previous part.</translation>
    </message>
    <message>
        <source>Menu, Shift+F10</source>
        <translation>Menu, Shift+F10</translation>
    </message>
    <message>
        <source>In the disks: open the menu of the entry.</source>
        <translation>In the disks: open the menu of the entry.</translation>
    </message>
    <message>
        <source>Shift+Up, Shift+Down</source>
        <translation>Shift+Up, Shift+Down</translation>
    </message>
    <message>
        <source>In the log: select lines.</source>
        <translation>In the log: select lines.</translation>
    </message>
    <message>
        <source>Ctrl+A, Ctrl+C</source>
        <translation>Ctrl+A, Ctrl+C</translation>
    </message>
    <message>
        <source>In the log: select all lines, copy the selected lines.</source>
        <translation>In the log: select all lines, copy the selected lines.</translation>
    </message>
    <message>
        <source>Up, Down</source>
        <translation>Up, Down</translation>
    </message>
    <message>
        <source>In the disks: previous disk, next disk. In other lists: scroll.</source>
        <translation>In the disks: previous disk, next disk. In other lists: scroll.</translation>
    </message>
    <message>
        <source>Left, Right</source>
        <translation>Left, Right</translation>
    </message>
    <message>
        <source>In the disks: previous entry of the disk, next entry.</source>
        <translation>In the disks: previous entry of the disk, next entry.</translation>
    </message>
    <message>
        <source>Home, End</source>
        <translation>Home, End</translation>
    </message>
    <message>
        <source>In a list: start, end.</source>
        <translation>In a list: start, end.</translation>
    </message>
    <message>
        <source>Enter, Space</source>
        <translation>Enter, Space</translation>
    </message>
    <message>
        <source>Press the button or change the switch.</source>
        <translation>Press the button or change the switch.</translation>
    </message>
    <message>
        <source>Escape</source>
        <translation>Escape</translation>
    </message>
    <message>
        <source>Close a dialog or the guide, clear the search, decline a recommendation.</source>
        <translation>Close a dialog or the guide, clear the search, decline a recommendation.</translation>
    </message>
    <message>
        <source>Ctrl+F</source>
        <translation>Ctrl+F</translation>
    </message>
    <message>
        <source>Search the disks.</source>
        <translation>Search the disks.</translation>
    </message>
    <message>
        <source>Ctrl+Q</source>
        <translation>Ctrl+Q</translation>
    </message>
    <message>
        <source>Close the window. A question follows if a task is destroying data.</source>
        <translation>Close the window. A question follows if a task is destroying data.</translation>
    </message>
    <message>
        <source>F1</source>
        <translation>F1</translation>
    </message>
    <message>
        <source>Show this list.</source>
        <translation>Show this list.</translation>
    </message>
</context>
<context>
    <name>InformationDialog</name>
    <message>
        <source>Close</source>
        <translation>Close</translation>
    </message>
</context>
<context>
    <name>InterruptionDialog</name>
    <message>
        <source>Closing the window cancels this task. The partitions that it changes remain incomplete and can be unusable.</source>
        <translation>Closing the window cancels this task. The partitions that it changes remain incomplete and can be unusable.</translation>
    </message>
    <message>
        <source>This task is changing data. If it is cancelled, the partitions that it changes remain incomplete and can be unusable.</source>
        <translation>This task is changing data. If it is cancelled, the partitions that it changes remain incomplete and can be unusable.</translation>
    </message>
    <message>
        <source>Cancel the task and close</source>
        <translation>Cancel the task and close</translation>
    </message>
    <message>
        <source>Cancel the task</source>
        <translation>Cancel the task</translation>
    </message>
    <message>
        <source>Continue the task</source>
        <translation>Continue the task</translation>
    </message>
</context>
<context>
    <name>Legend</name>
    <message>
        <source>Other</source>
        <translation>Other</translation>
    </message>
    <message>
        <source>Used</source>
        <translation>Used</translation>
    </message>
    <message>
        <source>Free</source>
        <translation>Free</translation>
    </message>
    <message>
        <source>Planned</source>
        <translation>Planned</translation>
    </message>
    <message>
        <source>Will be lost</source>
        <translation>Will be lost</translation>
    </message>
</context>
<context>
    <name>LogPane</name>
    <message>
        <source>Filter the log</source>
        <translation>Filter the log</translation>
    </message>
    <message>
        <source>No line contains this text.</source>
        <translation>No line contains this text.</translation>
    </message>
    <message>
        <source>Log</source>
        <translation>Log</translation>
    </message>
</context>
<context>
    <name>LossNotice</name>
    <message>
        <source>This order changes a real disk. If it fails, this data can be lost:</source>
        <translation>This order changes a real disk. If it fails, this data can be lost:</translation>
    </message>
    <message>
        <source>This order changes a real disk. It destroys this data permanently:</source>
        <translation>This order changes a real disk. It destroys this data permanently:</translation>
    </message>
    <message>
        <source>If this order fails, this data can be lost:</source>
        <translation>If this order fails, this data can be lost:</translation>
    </message>
    <message>
        <source>This order destroys this data permanently:</source>
        <translation>This order destroys this data permanently:</translation>
    </message>
    <message>
        <source>The disk has no known partition. Data without a partition is lost.</source>
        <translation>The disk has no known partition. Data without a partition is lost.</translation>
    </message>
</context>
<context>
    <name>ModeMark</name>
    <message>
        <source>Real disks</source>
        <translation>Real disks</translation>
    </message>
    <message>
        <source>Simulation</source>
        <translation>Simulation</translation>
    </message>
</context>
<context>
    <name>PageDialog</name>
    <message>
        <source>Start</source>
        <translation>Start</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Close</translation>
    </message>
</context>
<context>
    <name>Pages</name>
    <message>
        <source>Opened address: %1</source>
        <translation>Opened address: %1</translation>
    </message>
</context>
<context>
    <name>PaneTabs</name>
    <message>
        <source>Panes</source>
        <translation>Panes</translation>
    </message>
    <message>
        <source>Disks</source>
        <translation>Disks</translation>
    </message>
    <message>
        <source>Guide</source>
        <translation>Guide</translation>
    </message>
    <message>
        <source>Recommendation</source>
        <translation>Recommendation</translation>
    </message>
    <message>
        <source>Tasks</source>
        <translation>Tasks</translation>
    </message>
    <message>
        <source>Agent</source>
        <translation>Agent</translation>
    </message>
    <message>
        <source>Testing</source>
        <translation>Testing</translation>
    </message>
</context>
<context>
    <name>QueuePane</name>
    <message>
        <source>Tasks</source>
        <translation>Tasks</translation>
    </message>
    <message numerus="yes">
        <source>%n task(s)</source>
        <translation>
            <numerusform>%n task</numerusform>
            <numerusform>%n tasks</numerusform>
        </translation>
    </message>
    <message>
        <source>No tasks yet.</source>
        <translation>No tasks yet.</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Clear</translation>
    </message>
    <message>
        <source>Cancel all</source>
        <translation>Cancel all</translation>
    </message>
</context>
<context>
    <name>QueueRow</name>
    <message>
        <source>waiting</source>
        <translation>waiting</translation>
    </message>
    <message>
        <source>done</source>
        <translation>done</translation>
    </message>
    <message>
        <source>failed</source>
        <translation>failed</translation>
    </message>
    <message>
        <source>cancelled</source>
        <translation>cancelled</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>waiting for confirmation</source>
        <translation>waiting for confirmation</translation>
    </message>
</context>
<context>
    <name>RecommendationCard</name>
    <message>
        <source>Recommendation</source>
        <translation>Recommendation</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>The scan found nothing to recommend.</source>
        <translation>The scan found nothing to recommend.</translation>
    </message>
</context>
<context>
    <name>Sandbox</name>
    <message>
        <source>The disk has partitions.</source>
        <translation>The disk has partitions.</translation>
    </message>
    <message>
        <source>The disk has no partition table.</source>
        <translation>The disk has no partition table.</translation>
    </message>
    <message>
        <source>The erase count must be positive.</source>
        <translation>The erase count must be positive.</translation>
    </message>
    <message>
        <source>The partition table must be GPT or MBR.</source>
        <translation>The partition table must be GPT or MBR.</translation>
    </message>
    <message>
        <source>The partition table cannot hold that many partitions.</source>
        <translation>The partition table cannot hold that many partitions.</translation>
    </message>
    <message>
        <source>The disk is online.</source>
        <translation>The disk is online.</translation>
    </message>
    <message>
        <source>The drive is not on a USB disk.</source>
        <translation>The drive is not on a USB disk.</translation>
    </message>
    <message>
        <source>The disk holds the running system.</source>
        <translation>The disk holds the running system.</translation>
    </message>
    <message>
        <source>No other disk has room for the data.</source>
        <translation>No other disk has room for the data.</translation>
    </message>
    <message>
        <source>The cluster size is not supported.</source>
        <translation>The cluster size is not supported.</translation>
    </message>
    <message>
        <source>The clusters are too small for that size.</source>
        <translation>The clusters are too small for that size.</translation>
    </message>
    <message>
        <source>%1 cannot be created in that size.</source>
        <translation>%1 cannot be created in that size.</translation>
    </message>
    <message>
        <source>The label is too long.</source>
        <translation>The label is too long.</translation>
    </message>
    <message>
        <source>The label contains an invalid character.</source>
        <translation>The label contains an invalid character.</translation>
    </message>
    <message>
        <source>%1 does not support that size.</source>
        <translation>%1 does not support that size.</translation>
    </message>
    <message>
        <source>The source is locked by BitLocker.</source>
        <translation>The source is locked by BitLocker.</translation>
    </message>
    <message>
        <source>The destination is too small.</source>
        <translation>The destination is too small.</translation>
    </message>
    <message>
        <source>The destination is not a disk.</source>
        <translation>The destination is not a disk.</translation>
    </message>
    <message>
        <source>The destination must be another disk.</source>
        <translation>The destination must be another disk.</translation>
    </message>
    <message>
        <source>The partition table is full.</source>
        <translation>The partition table is full.</translation>
    </message>
    <message>
        <source>An MBR disk cannot use space beyond 2 TiB.</source>
        <translation>An MBR disk cannot use space beyond 2 TiB.</translation>
    </message>
    <message>
        <source>A partition can only be cloned to a partition or to free space.</source>
        <translation>A partition can only be cloned to a partition or to free space.</translation>
    </message>
    <message>
        <source>The disks have different sector sizes.</source>
        <translation>The disks have different sector sizes.</translation>
    </message>
    <message>
        <source>The destination cannot be written to.</source>
        <translation>The destination cannot be written to.</translation>
    </message>
    <message>
        <source>Boot media cannot be created.</source>
        <translation>Boot media cannot be created.</translation>
    </message>
    <message>
        <source>A USB disk is required.</source>
        <translation>A USB disk is required.</translation>
    </message>
    <message>
        <source>The disk is too small for the boot medium.</source>
        <translation>The disk is too small for the boot medium.</translation>
    </message>
    <message>
        <source>The pre-OS environment is already installed.</source>
        <translation>The pre-OS environment is already installed.</translation>
    </message>
    <message>
        <source>The pre-OS environment is not installed.</source>
        <translation>The pre-OS environment is not installed.</translation>
    </message>
    <message>
        <source>The disk cannot be read.</source>
        <translation>The disk cannot be read.</translation>
    </message>
    <message>
        <source>A GPT disk has no MBR to rebuild.</source>
        <translation>A GPT disk has no MBR to rebuild.</translation>
    </message>
    <message>
        <source>The disk has no room to move the partitions.</source>
        <translation>The disk has no room to move the partitions.</translation>
    </message>
    <message>
        <source>disk %1</source>
        <translation>disk %1</translation>
    </message>
    <message>
        <source>The source does not exist.</source>
        <translation>The source does not exist.</translation>
    </message>
    <message>
        <source>The source disk cannot be read.</source>
        <translation>The source disk cannot be read.</translation>
    </message>
    <message>
        <source>The source disk is empty.</source>
        <translation>The source disk is empty.</translation>
    </message>
    <message>
        <source>The source is not a partition.</source>
        <translation>The source is not a partition.</translation>
    </message>
    <message>
        <source>The destination does not exist.</source>
        <translation>The destination does not exist.</translation>
    </message>
    <message>
        <source>The source cannot be cloned onto itself.</source>
        <translation>The source cannot be cloned onto itself.</translation>
    </message>
    <message>
        <source>The destination has no place for a partition.</source>
        <translation>The destination has no place for a partition.</translation>
    </message>
    <message>
        <source>The destination holds the running system.</source>
        <translation>The destination holds the running system.</translation>
    </message>
    <message>
        <source>The disk is already a GPT disk.</source>
        <translation>The disk is already a GPT disk.</translation>
    </message>
    <message>
        <source>The disk has no room for the partition table.</source>
        <translation>The disk has no room for the partition table.</translation>
    </message>
    <message>
        <source>The disk is already an MBR disk.</source>
        <translation>The disk is already an MBR disk.</translation>
    </message>
    <message>
        <source>A partition extends beyond 2 TiB, which an MBR disk cannot address.</source>
        <translation>A partition extends beyond 2 TiB, which an MBR disk cannot address.</translation>
    </message>
    <message>
        <source>The disk is already a basic disk.</source>
        <translation>The disk is already a basic disk.</translation>
    </message>
    <message>
        <source>A volume spans several disks.</source>
        <translation>A volume spans several disks.</translation>
    </message>
    <message>
        <source>The disk is already a dynamic disk.</source>
        <translation>The disk is already a dynamic disk.</translation>
    </message>
    <message>
        <source>A USB disk cannot be dynamic.</source>
        <translation>A USB disk cannot be dynamic.</translation>
    </message>
    <message>
        <source>The disk cannot be written to.</source>
        <translation>The disk cannot be written to.</translation>
    </message>
    <message>
        <source>The disk is dynamic.</source>
        <translation>The disk is dynamic.</translation>
    </message>
    <message>
        <source>The drive cannot be written to.</source>
        <translation>The drive cannot be written to.</translation>
    </message>
    <message>
        <source>The drive already has that file system.</source>
        <translation>The drive already has that file system.</translation>
    </message>
    <message>
        <source>The drive has no readable file system.</source>
        <translation>The drive has no readable file system.</translation>
    </message>
    <message>
        <source>The running system needs its file system.</source>
        <translation>The running system needs its file system.</translation>
    </message>
    <message>
        <source>The drive cannot have that file system. %1</source>
        <translation>The drive cannot have that file system. %1</translation>
    </message>
    <message>
        <source>The conversion does not exist.</source>
        <translation>The conversion does not exist.</translation>
    </message>
    <message>
        <source>The drive does not exist.</source>
        <translation>The drive does not exist.</translation>
    </message>
    <message>
        <source>The disk does not exist.</source>
        <translation>The disk does not exist.</translation>
    </message>
    <message>
        <source>basic</source>
        <translation>basic</translation>
    </message>
    <message>
        <source>dynamic</source>
        <translation>dynamic</translation>
    </message>
    <message>
        <source>The function does not exist.</source>
        <translation>The function does not exist.</translation>
    </message>
    <message>
        <source>The function is switched off.</source>
        <translation>The function is switched off.</translation>
    </message>
    <message>
        <source>The target does not exist.</source>
        <translation>The target does not exist.</translation>
    </message>
    <message>
        <source>The disk is already aligned.</source>
        <translation>The disk is already aligned.</translation>
    </message>
    <message>
        <source>The drive is not encrypted.</source>
        <translation>The drive is not encrypted.</translation>
    </message>
    <message>
        <source>free space on disk %1</source>
        <translation>free space on disk %1</translation>
    </message>
    <message>
        <source>drive %1</source>
        <translation>drive %1</translation>
    </message>
    <message>
        <source>nothing</source>
        <translation>nothing</translation>
    </message>
    <message>
        <source>A partition in between cannot be moved.</source>
        <translation>A partition in between cannot be moved.</translation>
    </message>
    <message>
        <source>The disk has no space to take.</source>
        <translation>The disk has no space to take.</translation>
    </message>
    <message>
        <source>The data does not fit into that size.</source>
        <translation>The data does not fit into that size.</translation>
    </message>
    <message>
        <source>The free space after the drive is too small.</source>
        <translation>The free space after the drive is too small.</translation>
    </message>
    <message>
        <source>The drive does not have that much free space.</source>
        <translation>The drive does not have that much free space.</translation>
    </message>
    <message>
        <source>The free region does not exist.</source>
        <translation>The free region does not exist.</translation>
    </message>
    <message>
        <source>The free region is too small.</source>
        <translation>The free region is too small.</translation>
    </message>
    <message>
        <source>Both drives must be on the same disk.</source>
        <translation>Both drives must be on the same disk.</translation>
    </message>
    <message>
        <source>The second drive cannot be deleted.</source>
        <translation>The second drive cannot be deleted.</translation>
    </message>
    <message>
        <source>The second drive has no readable file system.</source>
        <translation>The second drive has no readable file system.</translation>
    </message>
    <message>
        <source>The drives are not adjacent.</source>
        <translation>The drives are not adjacent.</translation>
    </message>
    <message>
        <source>The target must be another drive on the same disk.</source>
        <translation>The target must be another drive on the same disk.</translation>
    </message>
    <message>
        <source>The size must be at least one mebibyte.</source>
        <translation>The size must be at least one mebibyte.</translation>
    </message>
    <message>
        <source>The target has no readable file system.</source>
        <translation>The target has no readable file system.</translation>
    </message>
    <message>
        <source>The drive already has that type, or its disk has no primary and logical partitions.</source>
        <translation>The drive already has that type, or its disk has no primary and logical partitions.</translation>
    </message>
    <message>
        <source>The computer starts from the drive.</source>
        <translation>The computer starts from the drive.</translation>
    </message>
    <message>
        <source>The drive is not adjacent to the other logical drives.</source>
        <translation>The drive is not adjacent to the other logical drives.</translation>
    </message>
    <message>
        <source>The drive is between logical drives.</source>
        <translation>The drive is between logical drives.</translation>
    </message>
    <message>
        <source>The running system needs its drive letter.</source>
        <translation>The running system needs its drive letter.</translation>
    </message>
    <message>
        <source>The new letter is not a drive letter, or is already in use.</source>
        <translation>The new letter is not a drive letter, or is already in use.</translation>
    </message>
    <message>
        <source>Only an inactive primary drive of an MBR disk can be made active.</source>
        <translation>Only an inactive primary drive of an MBR disk can be made active.</translation>
    </message>
    <message>
        <source>The drive is already hidden.</source>
        <translation>The drive is already hidden.</translation>
    </message>
    <message>
        <source>Disk %1 does not exist.</source>
        <translation>Disk %1 does not exist.</translation>
    </message>
    <message>
        <source>No drive has the letter %1.</source>
        <translation>No drive has the letter %1.</translation>
    </message>
    <message>
        <source>The drive holds the running system.</source>
        <translation>The drive holds the running system.</translation>
    </message>
    <message>
        <source>The drive is locked by BitLocker.</source>
        <translation>The drive is locked by BitLocker.</translation>
    </message>
    <message>
        <source>All drive letters are in use.</source>
        <translation>All drive letters are in use.</translation>
    </message>
    <message>
        <source>Function %1 does not exist.</source>
        <translation>Function %1 does not exist.</translation>
    </message>
    <message>
        <source>Clone: %1 to %2</source>
        <translation>Clone: %1 to %2</translation>
    </message>
    <message>
        <source>Convert: %1 to %2</source>
        <translation>Convert: %1 to %2</translation>
    </message>
    <message>
        <source>Disk %1</source>
        <translation>Disk %1</translation>
    </message>
    <message numerus="yes">
        <source>%n disk(s), %1</source>
        <translation>
            <numerusform>%n disk, %1</numerusform>
            <numerusform>%n disks, %1</numerusform>
        </translation>
    </message>
    <message>
        <source>Offline</source>
        <translation>Offline</translation>
    </message>
    <message>
        <source>Bad</source>
        <translation>Bad</translation>
    </message>
    <message>
        <source>Read-only</source>
        <translation>Read-only</translation>
    </message>
    <message>
        <source>Protected</source>
        <translation>Protected</translation>
    </message>
    <message>
        <source>Dynamic</source>
        <translation>Dynamic</translation>
    </message>
    <message>
        <source>Storage space</source>
        <translation>Storage space</translation>
    </message>
    <message>
        <source>Virtual</source>
        <translation>Virtual</translation>
    </message>
    <message>
        <source>Boot</source>
        <translation>Boot</translation>
    </message>
    <message>
        <source>System</source>
        <translation>System</translation>
    </message>
    <message>
        <source>EFI</source>
        <translation>EFI</translation>
    </message>
    <message>
        <source>Reserved</source>
        <translation>Reserved</translation>
    </message>
    <message>
        <source>Recovery</source>
        <translation>Recovery</translation>
    </message>
    <message>
        <source>Active</source>
        <translation>Active</translation>
    </message>
    <message>
        <source>Hidden</source>
        <translation>Hidden</translation>
    </message>
    <message>
        <source>Low space</source>
        <translation>Low space</translation>
    </message>
    <message>
        <source>BitLocker</source>
        <translation>BitLocker</translation>
    </message>
    <message>
        <source>BitLocker unlocked</source>
        <translation>BitLocker unlocked</translation>
    </message>
    <message>
        <source>BitLocker locked</source>
        <translation>BitLocker locked</translation>
    </message>
    <message>
        <source>EFI system</source>
        <translation>EFI system</translation>
    </message>
    <message>
        <source>no file system</source>
        <translation>no file system</translation>
    </message>
    <message>
        <source>no table</source>
        <translation>no table</translation>
    </message>
    <message>
        <source>Health errors</source>
        <translation>Health errors</translation>
    </message>
    <message>
        <source>Removable</source>
        <translation>Removable</translation>
    </message>
    <message>
        <source>Free</source>
        <translation>Free</translation>
    </message>
    <message>
        <source>Partition %1</source>
        <translation>Partition %1</translation>
    </message>
    <message>
        <source>Logical</source>
        <translation>Logical</translation>
    </message>
    <message>
        <source>%1 used, %2 free</source>
        <translation>%1 used, %2 free</translation>
    </message>
    <message>
        <source>from sector %1</source>
        <translation>from sector %1</translation>
    </message>
    <message>
        <source>system, from its drive</source>
        <translation>system, from its drive</translation>
    </message>
    <message>
        <source>system, from its disk</source>
        <translation>system, from its disk</translation>
    </message>
    <message>
        <source>disk to disk</source>
        <translation>disk to disk</translation>
    </message>
    <message>
        <source>partition to partition</source>
        <translation>partition to partition</translation>
    </message>
    <message>
        <source>to be chosen</source>
        <translation>to be chosen</translation>
    </message>
    <message>
        <source>unknown, the disk is offline</source>
        <translation>unknown, the disk is offline</translation>
    </message>
    <message>
        <source>the disk reports errors</source>
        <translation>the disk reports errors</translation>
    </message>
    <message>
        <source>good</source>
        <translation>good</translation>
    </message>
    <message>
        <source>ISO file</source>
        <translation>ISO file</translation>
    </message>
    <message>
        <source>Windows installer</source>
        <translation>Windows installer</translation>
    </message>
    <message>
        <source>USB disk</source>
        <translation>USB disk</translation>
    </message>
    <message>
        <source>Partition recovery: %1</source>
        <translation>Partition recovery: %1</translation>
    </message>
    <message>
        <source>Boot media: %1</source>
        <translation>Boot media: %1</translation>
    </message>
    <message>
        <source>%1 used</source>
        <translation>%1 used</translation>
    </message>
    <message>
        <source>Source</source>
        <translation>Source</translation>
    </message>
    <message>
        <source>Destination</source>
        <translation>Destination</translation>
    </message>
    <message>
        <source>Start</source>
        <translation>Start</translation>
    </message>
    <message>
        <source>Kind</source>
        <translation>Kind</translation>
    </message>
    <message>
        <source>Check</source>
        <translation>Check</translation>
    </message>
    <message>
        <source>Target</source>
        <translation>Target</translation>
    </message>
    <message>
        <source>Becomes</source>
        <translation>Becomes</translation>
    </message>
    <message>
        <source>Search in</source>
        <translation>Search in</translation>
    </message>
    <message>
        <source>Medium</source>
        <translation>Medium</translation>
    </message>
    <message>
        <source>Disk</source>
        <translation>Disk</translation>
    </message>
    <message>
        <source>Capacity</source>
        <translation>Capacity</translation>
    </message>
    <message>
        <source>Serial number</source>
        <translation>Serial number</translation>
    </message>
    <message>
        <source>unknown</source>
        <translation>unknown</translation>
    </message>
    <message>
        <source>Health</source>
        <translation>Health</translation>
    </message>
    <message>
        <source>Reset a Windows password</source>
        <translation>Reset a Windows password</translation>
    </message>
    <message>
        <source>Repair the Windows start</source>
        <translation>Repair the Windows start</translation>
    </message>
    <message>
        <source>Set or clear write protection</source>
        <translation>Set or clear write protection</translation>
    </message>
    <message>
        <source>Rebuild the MBR</source>
        <translation>Rebuild the MBR</translation>
    </message>
    <message>
        <source>Align to 4 KiB</source>
        <translation>Align to 4 KiB</translation>
    </message>
    <message>
        <source>Check for Windows 11</source>
        <translation>Check for Windows 11</translation>
    </message>
    <message>
        <source>Look for bad sectors</source>
        <translation>Look for bad sectors</translation>
    </message>
    <message>
        <source>Find the BitLocker recovery key</source>
        <translation>Find the BitLocker recovery key</translation>
    </message>
    <message>
        <source>Check the file system</source>
        <translation>Check the file system</translation>
    </message>
    <message>
        <source>Function</source>
        <translation>Function</translation>
    </message>
    <message>
        <source>function %1</source>
        <translation>function %1</translation>
    </message>
    <message>
        <source>The host is closing.</source>
        <translation>The host is closing.</translation>
    </message>
    <message>
        <source>The task failed after %1%, as --fail requests.</source>
        <translation>The task failed after %1%, as --fail requests.</translation>
    </message>
    <message>
        <source>call</source>
        <translation>call</translation>
    </message>
    <message>
        <source>Gate</source>
        <translation>Gate</translation>
    </message>
    <message>
        <source>boot media</source>
        <translation>boot media</translation>
    </message>
    <message>
        <source>Boot media cannot be created there.</source>
        <translation>Boot media cannot be created there.</translation>
    </message>
    <message>
        <source>Disk health: disk %1</source>
        <translation>Disk health: disk %1</translation>
    </message>
    <message>
        <source>toolbox %1</source>
        <translation>toolbox %1</translation>
    </message>
    <message>
        <source>Toolbox: %1</source>
        <translation>Toolbox: %1</translation>
    </message>
    <message>
        <source>The file system "%1" cannot be created.</source>
        <translation>The file system "%1" cannot be created.</translation>
    </message>
    <message>
        <source>The program %1 is not installed.</source>
        <translation>The program %1 is not installed.</translation>
    </message>
    <message>
        <source>The disk service cannot create %1 file systems.</source>
        <translation>The disk service cannot create %1 file systems.</translation>
    </message>
    <message>
        <source>The disk service cannot resize %1 file systems.</source>
        <translation>The disk service cannot resize %1 file systems.</translation>
    </message>
    <message>
        <source>The disk service chooses the cluster size itself.</source>
        <translation>The disk service chooses the cluster size itself.</translation>
    </message>
    <message>
        <source>The disk service is not running.</source>
        <translation>The disk service is not running.</translation>
    </message>
    <message>
        <source>The file %1 cannot be read: %2.</source>
        <translation>The file %1 cannot be read: %2.</translation>
    </message>
    <message>
        <source>The file %1 is damaged, so its content is ignored.</source>
        <translation>The file %1 is damaged, so its content is ignored.</translation>
    </message>
    <message>
        <source>The file %1 cannot be written: %2.</source>
        <translation>The file %1 cannot be written: %2.</translation>
    </message>
    <message>
        <source>The image %1 stays attached as %2: %3</source>
        <translation>The image %1 stays attached as %2: %3</translation>
    </message>
    <message>
        <source>The image %1 was still attached as %2 by a host that ended unexpectedly. The device is used again.</source>
        <translation>The image %1 was still attached as %2 by a host that ended unexpectedly. The device is used again.</translation>
    </message>
    <message>
        <source>The disk service has ended or does not answer.</source>
        <translation>The disk service has ended or does not answer.</translation>
    </message>
    <message>
        <source>The disk is no longer attached.</source>
        <translation>The disk is no longer attached.</translation>
    </message>
    <message>
        <source>%1 holds a mounted file system (%2).</source>
        <translation>%1 holds a mounted file system (%2).</translation>
    </message>
    <message>
        <source>%1 holds active swap space.</source>
        <translation>%1 holds active swap space.</translation>
    </message>
    <message>
        <source>%1 is a physical volume of LVM.</source>
        <translation>%1 is a physical volume of LVM.</translation>
    </message>
    <message>
        <source>%1 is a member of a RAID.</source>
        <translation>%1 is a member of a RAID.</translation>
    </message>
    <message>
        <source>%1 is an encrypted volume that is open.</source>
        <translation>%1 is an encrypted volume that is open.</translation>
    </message>
    <message>
        <source>The partition has changed since the order was accepted.</source>
        <translation>The partition has changed since the order was accepted.</translation>
    </message>
    <message>
        <source>The file system could not be repaired.</source>
        <translation>The file system could not be repaired.</translation>
    </message>
    <message>
        <source>The partitions of the disk have changed since the order was accepted.</source>
        <translation>The partitions of the disk have changed since the order was accepted.</translation>
    </message>
    <message>
        <source>The disk holds data without a partition table.</source>
        <translation>The disk holds data without a partition table.</translation>
    </message>
    <message>
        <source>%1 holds a file system without a partition table.</source>
        <translation>%1 holds a file system without a partition table.</translation>
    </message>
    <message>
        <source>The partition table of %1 is damaged or of an unsupported type (%2).</source>
        <translation>The partition table of %1 is damaged or of an unsupported type (%2).</translation>
    </message>
    <message>
        <source>The disk service cannot check %1 file systems.</source>
        <translation>The disk service cannot check %1 file systems.</translation>
    </message>
    <message>
        <source>The disk can be neither powered off nor ejected.</source>
        <translation>The disk can be neither powered off nor ejected.</translation>
    </message>
    <message>
        <source>The disk service creates FAT32 only on drives of 512 MiB or more.</source>
        <translation>The disk service creates FAT32 only on drives of 512 MiB or more.</translation>
    </message>
    <message>
        <source>The disk service creates FAT32 instead on drives of 512 MiB or more.</source>
        <translation>The disk service creates FAT32 instead on drives of 512 MiB or more.</translation>
    </message>
    <message>
        <source>The disk service cannot resize FAT file systems safely.</source>
        <translation>The disk service cannot resize FAT file systems safely.</translation>
    </message>
    <message>
        <source>The start of a drive would move, which no safe tool does on a real disk.</source>
        <translation>The start of a drive would move, which no safe tool does on a real disk.</translation>
    </message>
    <message>
        <source>Only the free space directly after a drive can be added to it on a real disk.</source>
        <translation>Only the free space directly after a drive can be added to it on a real disk.</translation>
    </message>
    <message>
        <source>An MBR disk has no hidden type for this file system.</source>
        <translation>An MBR disk has no hidden type for this file system.</translation>
    </message>
    <message>
        <source>The disk has partitions, and no safe tool converts an MBR disk to a GPT disk with its partitions.</source>
        <translation>The disk has partitions, and no safe tool converts an MBR disk to a GPT disk with its partitions.</translation>
    </message>
    <message>
        <source>The disk has partitions, and no safe tool converts a GPT disk to an MBR disk with its partitions.</source>
        <translation>The disk has partitions, and no safe tool converts a GPT disk to an MBR disk with its partitions.</translation>
    </message>
    <message>
        <source>The extended partition still has logical drives.</source>
        <translation>The extended partition still has logical drives.</translation>
    </message>
    <message>
        <source>The file system has errors.</source>
        <translation>The file system has errors.</translation>
    </message>
    <message>
        <source>Drives of real disks cannot be merged: no safe tool moves the files of one drive to the other.</source>
        <translation>Drives of real disks cannot be merged: no safe tool moves the files of one drive to the other.</translation>
    </message>
    <message>
        <source>No safe tool changes a logical drive of a real disk to a primary drive.</source>
        <translation>No safe tool changes a logical drive of a real disk to a primary drive.</translation>
    </message>
    <message>
        <source>No safe tool changes a primary drive of a real disk to a logical drive.</source>
        <translation>No safe tool changes a primary drive of a real disk to a logical drive.</translation>
    </message>
    <message>
        <source>No safe tool changes the cluster size of a drive on a real disk and keeps its files.</source>
        <translation>No safe tool changes the cluster size of a drive on a real disk and keeps its files.</translation>
    </message>
    <message>
        <source>No safe tool converts a drive of a real disk to NTFS and keeps its files.</source>
        <translation>No safe tool converts a drive of a real disk to NTFS and keeps its files.</translation>
    </message>
    <message>
        <source>No safe tool converts a drive of a real disk to FAT and keeps its files.</source>
        <translation>No safe tool converts a drive of a real disk to FAT and keeps its files.</translation>
    </message>
    <message>
        <source>No safe tool converts a drive of a real disk to exFAT and keeps its files.</source>
        <translation>No safe tool converts a drive of a real disk to exFAT and keeps its files.</translation>
    </message>
    <message>
        <source>No safe tool moves the data of a system drive to another real disk.</source>
        <translation>No safe tool moves the data of a system drive to another real disk.</translation>
    </message>
    <message>
        <source>Real disks are always online under this operating system.</source>
        <translation>Real disks are always online under this operating system.</translation>
    </message>
    <message>
        <source>The disk service cannot convert dynamic disks to basic disks.</source>
        <translation>The disk service cannot convert dynamic disks to basic disks.</translation>
    </message>
    <message>
        <source>The disk service cannot create dynamic disks.</source>
        <translation>The disk service cannot create dynamic disks.</translation>
    </message>
    <message>
        <source>The host has no system files for a real boot medium.</source>
        <translation>The host has no system files for a real boot medium.</translation>
    </message>
    <message>
        <source>The host has no pre-OS environment to install on a real disk.</source>
        <translation>The host has no pre-OS environment to install on a real disk.</translation>
    </message>
    <message>
        <source>The host cannot remove a pre-OS environment from a real disk.</source>
        <translation>The host cannot remove a pre-OS environment from a real disk.</translation>
    </message>
    <message>
        <source>The disk service cannot search real disks for lost partitions.</source>
        <translation>The disk service cannot search real disks for lost partitions.</translation>
    </message>
    <message>
        <source>The disk service cannot change the write protection of a real disk.</source>
        <translation>The disk service cannot change the write protection of a real disk.</translation>
    </message>
    <message>
        <source>The disk service cannot write the boot code of a real disk.</source>
        <translation>The disk service cannot write the boot code of a real disk.</translation>
    </message>
    <message>
        <source>Real disks cannot be aligned: no safe tool moves the start of a partition.</source>
        <translation>Real disks cannot be aligned: no safe tool moves the start of a partition.</translation>
    </message>
    <message>
        <source>Move free space between partitions</source>
        <translation>Move free space between partitions</translation>
    </message>
    <message>
        <source>Delete all partitions of the disk</source>
        <translation>Delete all partitions of the disk</translation>
    </message>
    <message>
        <source>Write a new partition table</source>
        <translation>Write a new partition table</translation>
    </message>
    <message>
        <source>Overwrite the whole disk</source>
        <translation>Overwrite the whole disk</translation>
    </message>
    <message>
        <source>Shrink a partition</source>
        <translation>Shrink a partition</translation>
    </message>
    <message>
        <source>Format a partition</source>
        <translation>Format a partition</translation>
    </message>
    <message>
        <source>Delete a partition</source>
        <translation>Delete a partition</translation>
    </message>
    <message>
        <source>Split a partition</source>
        <translation>Split a partition</translation>
    </message>
    <message>
        <source>Merge two partitions</source>
        <translation>Merge two partitions</translation>
    </message>
    <message>
        <source>Take space from a partition</source>
        <translation>Take space from a partition</translation>
    </message>
    <message>
        <source>Overwrite a partition</source>
        <translation>Overwrite a partition</translation>
    </message>
    <message>
        <source>Convert a partition</source>
        <translation>Convert a partition</translation>
    </message>
    <message>
        <source>Change the cluster size</source>
        <translation>Change the cluster size</translation>
    </message>
    <message>
        <source>Move the data of a drive</source>
        <translation>Move the data of a drive</translation>
    </message>
    <message>
        <source>Divide the disk into new partitions</source>
        <translation>Divide the disk into new partitions</translation>
    </message>
    <message>
        <source>Format the whole disk (low level)</source>
        <translation>Format the whole disk (low level)</translation>
    </message>
    <message>
        <source>Clone onto the disk</source>
        <translation>Clone onto the disk</translation>
    </message>
    <message>
        <source>Clone onto the partition</source>
        <translation>Clone onto the partition</translation>
    </message>
    <message>
        <source>Convert the disk</source>
        <translation>Convert the disk</translation>
    </message>
    <message>
        <source>Create a boot medium</source>
        <translation>Create a boot medium</translation>
    </message>
    <message>
        <source>Change the partition table</source>
        <translation>Change the partition table</translation>
    </message>
    <message>
        <source>Move the partitions of the disk</source>
        <translation>Move the partitions of the disk</translation>
    </message>
    <message>
        <source>Check and repair a file system</source>
        <translation>Check and repair a file system</translation>
    </message>
    <message>
        <source>Change the disk</source>
        <translation>Change the disk</translation>
    </message>
    <message>
        <source>The disk changed while the confirmation was open. Nothing has been written.</source>
        <translation>The disk changed while the confirmation was open. Nothing has been written.</translation>
    </message>
    <message>
        <source>This order destroys data on a disk and needs a confirmation in the window. Start the host with a window, or with --unattended.</source>
        <translation>This order destroys data on a disk and needs a confirmation in the window. Start the host with a window, or with --unattended.</translation>
    </message>
    <message>
        <source>The disk service created the partition at another position.</source>
        <translation>The disk service created the partition at another position.</translation>
    </message>
    <message>
        <source>The disk service cannot create a logical drive between two others.</source>
        <translation>The disk service cannot create a logical drive between two others.</translation>
    </message>
    <message>
        <source>Another disk has taken the place of this disk.</source>
        <translation>Another disk has taken the place of this disk.</translation>
    </message>
    <message>
        <source>The source cannot be read after byte %1 of the partition: %2.</source>
        <translation>The source cannot be read after byte %1 of the partition: %2.</translation>
    </message>
    <message>
        <source>The destination cannot be written after byte %1 of the partition: %2.</source>
        <translation>The destination cannot be written after byte %1 of the partition: %2.</translation>
    </message>
    <message>
        <source>The copy cannot be read after byte %1 of the partition: %2.</source>
        <translation>The copy cannot be read after byte %1 of the partition: %2.</translation>
    </message>
    <message>
        <source>The copy differs from the source at byte %1 of the partition.</source>
        <translation>The copy differs from the source at byte %1 of the partition.</translation>
    </message>
    <message>
        <source>All blocks are copied, so the destination must be as large as the source.</source>
        <translation>All blocks are copied, so the destination must be as large as the source.</translation>
    </message>
    <message>
        <source>A copy of a %1 volume would have the same identifier as the original, because no tool changes it.</source>
        <translation>A copy of a %1 volume would have the same identifier as the original, because no tool changes it.</translation>
    </message>
    <message>
        <source>Unreadable sectors: %1. The first one is sector %2 of the disk, the last one is sector %3.</source>
        <translation>Unreadable sectors: %1. The first one is sector %2 of the disk, the last one is sector %3.</translation>
    </message>
    <message>
        <source>The host does not know which partitions of a real disk belong to an operating system.</source>
        <translation>The host does not know which partitions of a real disk belong to an operating system.</translation>
    </message>
    <message>
        <source>The identifier of the copy cannot be changed: %1</source>
        <translation>The identifier of the copy cannot be changed: %1</translation>
    </message>
    <message>
        <source>about %1 s left</source>
        <translation>about %1 s left</translation>
    </message>
    <message>
        <source>about %1 min left</source>
        <translation>about %1 min left</translation>
    </message>
    <message>
        <source>about %1 h left</source>
        <translation>about %1 h left</translation>
    </message>
    <message>
        <source>client on port %1</source>
        <translation>client on port %1</translation>
    </message>
    <message>
        <source>process %1</source>
        <translation>process %1</translation>
    </message>
    <message>
        <source>one of %1 clients</source>
        <translation>one of %1 clients</translation>
    </message>
</context>
<context>
    <name>SearchField</name>
    <message>
        <source>Search disks: name, letter, label, file system</source>
        <translation>Search disks: name, letter, label, file system</translation>
    </message>
    <message>
        <source>Search disks</source>
        <translation>Search disks</translation>
    </message>
</context>
<context>
    <name>Segment</name>
    <message>
        <source>Target</source>
        <translation>Target</translation>
    </message>
    <message>
        <source>Source</source>
        <translation>Source</translation>
    </message>
</context>
<context>
    <name>SegmentMenu</name>
    <message>
        <source>Copy: %1</source>
        <translation>Copy: %1</translation>
    </message>
    <message>
        <source>Show the history of drive %1</source>
        <translation>Show the history of drive %1</translation>
    </message>
</context>
<context>
    <name>TestPanel</name>
    <message>
        <source>Testing</source>
        <translation>Testing</translation>
    </message>
    <message>
        <source>Windows 11 checker</source>
        <translation>Windows 11 checker</translation>
    </message>
    <message>
        <source>Dialog open</source>
        <translation>Dialog open</translation>
    </message>
</context>
<context>
    <name>TimelinePane</name>
    <message>
        <source>The agent has not called a tool yet.</source>
        <translation>The agent has not called a tool yet.</translation>
    </message>
    <message>
        <source>No call names drive %1.</source>
        <translation>No call names drive %1.</translation>
    </message>
    <message>
        <source>Calls of the agent</source>
        <translation>Calls of the agent</translation>
    </message>
</context>
<context>
    <name>TimelineRow</name>
    <message>
        <source>running</source>
        <translation>running</translation>
    </message>
    <message>
        <source>queued</source>
        <translation>queued</translation>
    </message>
    <message>
        <source>rejected</source>
        <translation>rejected</translation>
    </message>
    <message>
        <source>answered</source>
        <translation>answered</translation>
    </message>
    <message>
        <source>held</source>
        <translation>held</translation>
    </message>
    <message numerus="yes">
        <source>rejected %n time(s)</source>
        <translation>
            <numerusform>rejected %n time</numerusform>
            <numerusform>rejected %n times</numerusform>
        </translation>
    </message>
    <message>
        <source>done</source>
        <translation>done</translation>
    </message>
    <message>
        <source>failed</source>
        <translation>failed</translation>
    </message>
    <message>
        <source>cancelled</source>
        <translation>cancelled</translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <source>Sandbox host: %1 (real disks)</source>
        <translation>Sandbox host: %1 (real disks)</translation>
    </message>
    <message>
        <source>Sandbox host (simulation)</source>
        <translation>Sandbox host (simulation)</translation>
    </message>
    <message>
        <source>Sandbox host: %1 (simulation)</source>
        <translation>Sandbox host: %1 (simulation)</translation>
    </message>
</context>
</TS>
