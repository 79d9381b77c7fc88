<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
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
</context>
<context>
    <name>DiskCard</name>
    <message>
        <source>Nothing to show</source>
        <translation>Nothing to show</translation>
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
        <source>Windows 11 checker</source>
        <translation>Windows 11 checker</translation>
    </message>
    <message>
        <source>Dialog open</source>
        <translation>Dialog open</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>Language</translation>
    </message>
    <message>
        <source>Scan now</source>
        <translation>Scan now</translation>
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
        <source>Nothing has been ordered yet.</source>
        <translation>Nothing has been ordered yet.</translation>
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
</context>
<context>
    <name>RecommendationCard</name>
    <message>
        <source>Recommendation</source>
        <translation>Recommendation</translation>
    </message>
</context>
<context>
    <name>Sandbox</name>
    <message>
        <source>the disk has partitions</source>
        <translation>the disk has partitions</translation>
    </message>
    <message>
        <source>the disk has no partition table</source>
        <translation>the disk has no partition table</translation>
    </message>
    <message>
        <source>the erase count must be positive</source>
        <translation>the erase count must be positive</translation>
    </message>
    <message>
        <source>the table must be GPT or MBR</source>
        <translation>the table must be GPT or MBR</translation>
    </message>
    <message>
        <source>the table does not hold that many partitions</source>
        <translation>the table does not hold that many partitions</translation>
    </message>
    <message>
        <source>the disk is online</source>
        <translation>the disk is online</translation>
    </message>
    <message>
        <source>the drive is not on a USB disk</source>
        <translation>the drive is not on a USB disk</translation>
    </message>
    <message>
        <source>the disk holds the running system</source>
        <translation>the disk holds the running system</translation>
    </message>
    <message>
        <source>no other disk has room for the data</source>
        <translation>no other disk has room for the data</translation>
    </message>
    <message>
        <source>no such cluster size</source>
        <translation>no such cluster size</translation>
    </message>
    <message>
        <source>the clusters are too small for that size</source>
        <translation>the clusters are too small for that size</translation>
    </message>
    <message>
        <source>%1 cannot be made in that size</source>
        <translation>%1 cannot be made in that size</translation>
    </message>
    <message>
        <source>the label is too long</source>
        <translation>the label is too long</translation>
    </message>
    <message>
        <source>the label has a character that none can have</source>
        <translation>the label has a character that none can have</translation>
    </message>
    <message>
        <source>%1 cannot have that size</source>
        <translation>%1 cannot have that size</translation>
    </message>
    <message>
        <source>the source is locked by BitLocker</source>
        <translation>the source is locked by BitLocker</translation>
    </message>
    <message>
        <source>the destination is too small</source>
        <translation>the destination is too small</translation>
    </message>
    <message>
        <source>the destination is no disk</source>
        <translation>the destination is no disk</translation>
    </message>
    <message>
        <source>the destination is no other disk</source>
        <translation>the destination is no other disk</translation>
    </message>
    <message>
        <source>the partition table is full</source>
        <translation>the partition table is full</translation>
    </message>
    <message>
        <source>an MBR disk cannot use space beyond 2 TiB</source>
        <translation>an MBR disk cannot use space beyond 2 TiB</translation>
    </message>
    <message>
        <source>a partition is cloned to a partition or into free space</source>
        <translation>a partition is cloned to a partition or into free space</translation>
    </message>
    <message>
        <source>the disks have sectors of different sizes</source>
        <translation>the disks have sectors of different sizes</translation>
    </message>
    <message>
        <source>the destination cannot be written to</source>
        <translation>the destination cannot be written to</translation>
    </message>
    <message>
        <source>boot media cannot be made</source>
        <translation>boot media cannot be made</translation>
    </message>
    <message>
        <source>there is no USB disk for it</source>
        <translation>there is no USB disk for it</translation>
    </message>
    <message>
        <source>the disk is too small for it</source>
        <translation>the disk is too small for it</translation>
    </message>
    <message>
        <source>the pre-OS environment is installed</source>
        <translation>the pre-OS environment is installed</translation>
    </message>
    <message>
        <source>the pre-OS environment is not installed</source>
        <translation>the pre-OS environment is not installed</translation>
    </message>
    <message>
        <source>the disk cannot be read</source>
        <translation>the disk cannot be read</translation>
    </message>
    <message>
        <source>a GPT disk has no MBR to rebuild</source>
        <translation>a GPT disk has no MBR to rebuild</translation>
    </message>
    <message>
        <source>there is no room to move the partitions</source>
        <translation>there is no room to move the partitions</translation>
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
        <source>The destination cannot be written to.</source>
        <translation>The destination cannot be written to.</translation>
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
        <source>The destination is too small.</source>
        <translation>The destination is too small.</translation>
    </message>
    <message>
        <source>The disk is a GPT disk already.</source>
        <translation>The disk is a GPT disk already.</translation>
    </message>
    <message>
        <source>The disk has no room for the table.</source>
        <translation>The disk has no room for the table.</translation>
    </message>
    <message>
        <source>The disk is an MBR disk already.</source>
        <translation>The disk is an MBR disk already.</translation>
    </message>
    <message>
        <source>A partition lies beyond what an MBR disk can address.</source>
        <translation>A partition lies beyond what an MBR disk can address.</translation>
    </message>
    <message>
        <source>The disk is a basic disk already.</source>
        <translation>The disk is a basic disk already.</translation>
    </message>
    <message>
        <source>A volume reaches over several disks.</source>
        <translation>A volume reaches over several disks.</translation>
    </message>
    <message>
        <source>The disk is a dynamic disk already.</source>
        <translation>The disk is a dynamic disk already.</translation>
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
        <source>The disk has no partition table.</source>
        <translation>The disk has no partition table.</translation>
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
        <source>The drive has that file system already.</source>
        <translation>The drive has that file system already.</translation>
    </message>
    <message>
        <source>The drive has no file system that can be read.</source>
        <translation>The drive has no file system that can be read.</translation>
    </message>
    <message>
        <source>The running system needs its file system.</source>
        <translation>The running system needs its file system.</translation>
    </message>
    <message>
        <source>The drive cannot have that file system: %1.</source>
        <translation>The drive cannot have that file system: %1.</translation>
    </message>
    <message>
        <source>There is no such conversion.</source>
        <translation>There is no such conversion.</translation>
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
        <source>there is no such function</source>
        <translation>there is no such function</translation>
    </message>
    <message>
        <source>the function is switched off</source>
        <translation>the function is switched off</translation>
    </message>
    <message>
        <source>the target does not exist</source>
        <translation>the target does not exist</translation>
    </message>
    <message>
        <source>the disk is aligned</source>
        <translation>the disk is aligned</translation>
    </message>
    <message>
        <source>the drive is not encrypted</source>
        <translation>the drive is not encrypted</translation>
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
        <source>a partition in between cannot be moved</source>
        <translation>a partition in between cannot be moved</translation>
    </message>
    <message>
        <source>there is no room to take on that disk</source>
        <translation>there is no room to take on that disk</translation>
    </message>
    <message>
        <source>the data does not fit into that size</source>
        <translation>the data does not fit into that size</translation>
    </message>
    <message>
        <source>there is not that much free space behind the drive</source>
        <translation>there is not that much free space behind the drive</translation>
    </message>
    <message>
        <source>the drive has not that much free space</source>
        <translation>the drive has not that much free space</translation>
    </message>
    <message>
        <source>the disk has no such free region</source>
        <translation>the disk has no such free region</translation>
    </message>
    <message>
        <source>the free region is not that large</source>
        <translation>the free region is not that large</translation>
    </message>
    <message>
        <source>both drives must lie on one disk</source>
        <translation>both drives must lie on one disk</translation>
    </message>
    <message>
        <source>the second drive cannot be given up</source>
        <translation>the second drive cannot be given up</translation>
    </message>
    <message>
        <source>the second drive has no file system that can be read</source>
        <translation>the second drive has no file system that can be read</translation>
    </message>
    <message>
        <source>the drives are no neighbours</source>
        <translation>the drives are no neighbours</translation>
    </message>
    <message>
        <source>the target must be another drive of the same disk</source>
        <translation>the target must be another drive of the same disk</translation>
    </message>
    <message>
        <source>less than one mebibyte cannot be given</source>
        <translation>less than one mebibyte cannot be given</translation>
    </message>
    <message>
        <source>the target has no file system that can be read</source>
        <translation>the target has no file system that can be read</translation>
    </message>
    <message>
        <source>the drive is of that kind already, or its disk knows no kinds</source>
        <translation>the drive is of that kind already, or its disk knows no kinds</translation>
    </message>
    <message>
        <source>the machine starts from the drive</source>
        <translation>the machine starts from the drive</translation>
    </message>
    <message>
        <source>the other logical drives lie elsewhere</source>
        <translation>the other logical drives lie elsewhere</translation>
    </message>
    <message>
        <source>the drive lies between logical drives</source>
        <translation>the drive lies between logical drives</translation>
    </message>
    <message>
        <source>the running system needs its letter</source>
        <translation>the running system needs its letter</translation>
    </message>
    <message>
        <source>the new letter is not a drive letter, or is already in use</source>
        <translation>the new letter is not a drive letter, or is already in use</translation>
    </message>
    <message>
        <source>only a primary drive of an MBR disk can be made active, once</source>
        <translation>only a primary drive of an MBR disk can be made active, once</translation>
    </message>
    <message>
        <source>the drive is hidden already</source>
        <translation>the drive is hidden already</translation>
    </message>
    <message>
        <source>there is no disk %1</source>
        <translation>there is no disk %1</translation>
    </message>
    <message>
        <source>no drive has the letter %1</source>
        <translation>no drive has the letter %1</translation>
    </message>
    <message>
        <source>the disk cannot be written to</source>
        <translation>the disk cannot be written to</translation>
    </message>
    <message>
        <source>the drive cannot be written to</source>
        <translation>the drive cannot be written to</translation>
    </message>
    <message>
        <source>the drive holds the running system</source>
        <translation>the drive holds the running system</translation>
    </message>
    <message>
        <source>the drive is locked by BitLocker</source>
        <translation>the drive is locked by BitLocker</translation>
    </message>
    <message>
        <source>the drive has no file system that can be read</source>
        <translation>the drive has no file system that can be read</translation>
    </message>
    <message>
        <source>the file system "%1" cannot be made</source>
        <translation>the file system "%1" cannot be made</translation>
    </message>
    <message>
        <source>the disk is dynamic</source>
        <translation>the disk is dynamic</translation>
    </message>
    <message>
        <source>all drive letters are taken</source>
        <translation>all drive letters are taken</translation>
    </message>
    <message>
        <source>there is no function %1</source>
        <translation>there is no function %1</translation>
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
        <source>There is no such disk.</source>
        <translation>There is no such disk.</translation>
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
        <source>the host is closing</source>
        <translation>the host is closing</translation>
    </message>
    <message>
        <source>failed after %1% as --fail asks</source>
        <translation>failed after %1% as --fail asks</translation>
    </message>
    <message>
        <source>The host is closing.</source>
        <translation>The host is closing.</translation>
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
        <source>boot media cannot be made there</source>
        <translation>boot media cannot be made there</translation>
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
</context>
<context>
    <name>TimelinePane</name>
    <message>
        <source>The agent has not called a tool yet.</source>
        <translation>The agent has not called a tool yet.</translation>
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
        <source>refused</source>
        <translation>refused</translation>
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
        <source>refused %n time(s)</source>
        <translation>
            <numerusform>refused %n time</numerusform>
            <numerusform>refused %n times</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <source>Sandbox host</source>
        <translation>Sandbox host</translation>
    </message>
</context>
</TS>
