<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>QObject</name>
    <message>
        <source>Invalid or duplicate boot entries were found in the system boot menu. We recommend removing them with one click! </source>
        <translation>Ungültige oder doppelte Starteinträge wurden im Startmenü des Systems gefunden. Wir empfehlen, sie mit einem Klick zu entfernen! </translation>
    </message>
    <message>
        <source>We have detected an anomaly in the health status of disk %1. We recommend checking the disk health as soon as possible!</source>
        <translation>Beim Zustand von Datenträger %1 wurde eine Auffälligkeit erkannt. Wir empfehlen, den Zustand des Datenträgers so bald wie möglich zu prüfen!</translation>
    </message>
    <message>
        <source>Due to incorrect partition table settings on disk %1, its space is not fully utilized. We recommend converting to GPT disk!</source>
        <translation>Wegen einer unpassenden Partitionstabelle auf Datenträger %1 wird sein Speicherplatz nicht vollständig genutzt. Wir empfehlen, ihn in einen GPT-Datenträger zu konvertieren!</translation>
    </message>
    <message>
        <source>The %1 drive on the SSD is not 4K aligned. We recommend performing 4K alignment immediately to significantly improve its performance!</source>
        <translation>Das Laufwerk %1 auf der SSD ist nicht an 4K ausgerichtet. Wir empfehlen, die 4K-Ausrichtung sofort durchzuführen, um die Leistung deutlich zu verbessern!</translation>
    </message>
    <message>
        <source>The performance of this machine is significantly affected by the boot disk. We recommend replacing it with an SSD for better performance. Once you are ready with the SSD, use &quot;System Migration&quot; to easily transfer the system to the SSD! </source>
        <translation>Die Leistung dieses Computers wird durch den Startdatenträger erheblich beeinträchtigt. Wir empfehlen, ihn durch eine SSD zu ersetzen. Sobald die SSD bereitsteht, übertragen Sie das System mit „Systemmigration“ einfach auf die SSD! </translation>
    </message>
    <message>
        <source>Got it</source>
        <translation>Verstanden</translation>
    </message>
    <message>
        <source>If you&apos;re looking to optimize your hard drive&apos;s performance, we recommend enabling the [4K alignment] function. It can significantly boost read/write speeds and help extend the lifespan of your hard drive.</source>
        <translation>Wenn Sie die Leistung Ihrer Festplatte optimieren möchten, empfehlen wir die Funktion [4K-Ausrichtung]. Sie kann die Lese- und Schreibgeschwindigkeit deutlich steigern und die Lebensdauer Ihrer Festplatte verlängern.</translation>
    </message>
    <message>
        <source>If you need to create a bootable Windows installation disk, we recommend using the [ISO Burner] function. It allows you to easily burn Windows system images to a CD or USB drive.</source>
        <translation>Wenn Sie einen bootfähigen Windows-Installationsdatenträger erstellen möchten, empfehlen wir die Funktion [ISO-Brenner]. Damit brennen Sie Windows-Systemabbilder mühelos auf eine CD oder schreiben sie auf ein USB-Laufwerk.</translation>
    </message>
    <message>
        <source>If your system fails to boot, we recommend using the [Create Bootable Media] function to create a Windows PE boot disk. This allows you to easily troubleshoot and repair your system, ensuring you can quickly get back up and running.</source>
        <translation>Wenn Ihr System nicht mehr startet, empfehlen wir, mit der Funktion [Rettungsmedium erstellen] ein Windows-PE-Startmedium anzulegen. Damit können Sie Fehler leicht suchen und Ihr System reparieren, sodass es schnell wieder läuft.</translation>
    </message>
    <message>
        <source>If you&apos;ve lost access to your BitLocker-encrypted hard drive, we recommend using the [BitLocker Key Finder] function. It helps you quickly retrieve your recovery key, ensuring you can regain access to your encrypted data.</source>
        <translation>Wenn Sie keinen Zugriff mehr auf Ihre mit BitLocker verschlüsselte Festplatte haben, empfehlen wir die Funktion [BitLocker-Schlüsselsuche]. Sie hilft Ihnen, Ihren Wiederherstellungsschlüssel schnell zu finden, damit Sie wieder auf Ihre verschlüsselten Daten zugreifen können.</translation>
    </message>
    <message>
        <source>If you&apos;ve forgotten your Windows login password, we recommend using the [Password Clear] function. It allows you to easily reset your password, ensuring you can regain access to your system quickly and securely.</source>
        <translation>Wenn Sie Ihr Windows-Anmeldekennwort vergessen haben, empfehlen wir die Funktion [Kennwort löschen]. Damit setzen Sie Ihr Kennwort mühelos zurück und erhalten schnell und sicher wieder Zugang zu Ihrem System.</translation>
    </message>
    <message>
        <source>If your hard drive is having boot issues, we recommend using the [Rebuild MBR] function. It repairs the Master Boot Record (MBR), helping you resolve startup problems and get your system running smoothly again.</source>
        <translation>Wenn Ihre Festplatte Startprobleme hat, empfehlen wir die Funktion [MBR neu erstellen]. Sie repariert den Master Boot Record (MBR), behebt Startprobleme und bringt Ihr System wieder reibungslos zum Laufen.</translation>
    </message>
    <message>
        <source>If you&apos;ve accidentally deleted a partition, we recommend using the [Partition Recovery] function. It helps you recover lost partitions and restore your data quickly and safely.</source>
        <translation>Wenn Sie versehentlich eine Partition gelöscht haben, empfehlen wir die Funktion [Partitionswiederherstellung]. Sie hilft Ihnen, verlorene Partitionen schnell und sicher wiederherzustellen und Ihre Daten zu retten.</translation>
    </message>
    <message>
        <source>If your hard disk partition has become inaccessible or turned RAW, we recommend using the [Repair RAW Partition] function. It helps you restore access to your partition and recover your data quickly and effectively.</source>
        <translation>Wenn eine Partition Ihrer Festplatte nicht mehr zugänglich ist oder als RAW angezeigt wird, empfehlen wir die Funktion [RAW-Partition reparieren]. Sie hilft Ihnen, wieder auf die Partition zuzugreifen und Ihre Daten schnell und zuverlässig wiederherzustellen.</translation>
    </message>
    <message>
        <source>If your Windows system is having startup issues, we recommend using the [Boot Repair] function. It helps you resolve a wide range of boot problems, ensuring your system can start up smoothly and reliably.</source>
        <translation>Wenn Ihr Windows-System Startprobleme hat, empfehlen wir die Funktion [Startreparatur]. Sie hilft Ihnen, eine Vielzahl von Startproblemen zu beheben, damit Ihr System reibungslos und zuverlässig startet.</translation>
    </message>
    <message>
        <source>If you suspect your hard drive may have bad sectors or performance issues, we recommend using the [Surface Test] function. It scans your drive for potential problems, helping you identify and address issues before they lead to data loss.</source>
        <translation>Wenn Sie auf Ihrer Festplatte fehlerhafte Sektoren oder Leistungsprobleme vermuten, empfehlen wir die Funktion [Oberflächentest]. Sie untersucht Ihr Laufwerk auf mögliche Probleme und hilft Ihnen, Fehler zu finden und zu beheben, bevor sie zu Datenverlust führen.</translation>
    </message>
    <message>
        <source>If your USB device is write-protected and you can&apos;t modify or save files, we recommend using the [Write Protection] function. It helps you remove the write protection status, allowing you to use your USB device normally again.</source>
        <translation>Wenn Ihr USB-Gerät schreibgeschützt ist und Sie keine Dateien ändern oder speichern können, empfehlen wir die Funktion [Schreibschutz]. Sie hilft Ihnen, den Schreibschutz aufzuheben, damit Sie Ihr USB-Gerät wieder normal verwenden können.</translation>
    </message>
    <message>
        <source>If you need to manage BitLocker-encrypted hard drives, we recommend using the [BitLocker Manager] function. It simplifies the process of handling encryption, allowing you to easily unlock, lock, or modify BitLocker settings.</source>
        <translation>Wenn Sie mit BitLocker verschlüsselte Festplatten verwalten möchten, empfehlen wir die Funktion [BitLocker-Verwaltung]. Sie vereinfacht den Umgang mit der Verschlüsselung: Sie können Laufwerke mühelos entsperren und sperren und BitLocker-Einstellungen ändern.</translation>
    </message>
    <message>
        <source>Worried about your hard drive&apos;s health? Try the [Disk Health] function! It monitors key indicators and alerts you to potential issues before they become serious.</source>
        <translation>Machen Sie sich Sorgen um den Zustand Ihrer Festplatte? Probieren Sie die Funktion [Datenträgerzustand]! Sie überwacht wichtige Kennwerte und warnt Sie vor möglichen Problemen, bevor sie ernst werden.</translation>
    </message>
    <message>
        <source>If your C drive is running out of space, we recommend using the [Data Migration] feature. It allows you to easily move applications and data to another disk drive, freeing up space and improving your system&apos;s performance.</source>
        <translation>Wenn auf Ihrem Laufwerk C der Speicherplatz knapp wird, empfehlen wir die Funktion [Datenmigration]. Damit verschieben Sie Anwendungen und Daten mühelos auf ein anderes Laufwerk, schaffen Platz und verbessern die Leistung Ihres Systems.</translation>
    </message>
    <message>
        <source>If you&apos;re upgrading to a new SSD, we recommend using the [Migrate OS] function. It allows you to seamlessly transfer your operating system, along with all your files and settings, to the new drive, ensuring a smooth transition and faster performance.</source>
        <translation>Wenn Sie auf eine neue SSD umsteigen, empfehlen wir die Funktion [Betriebssystem migrieren]. Damit übertragen Sie Ihr Betriebssystem mit allen Dateien und Einstellungen nahtlos auf das neue Laufwerk und profitieren von einem reibungslosen Wechsel und höherer Geschwindigkeit.</translation>
    </message>
    <message>
        <source>To enable Secure Boot, please first complete the prerequisite: converting the disk to GPT.</source>
        <translation>Um Secure Boot zu aktivieren, schaffen Sie bitte zuerst die Voraussetzung dafür: Konvertieren Sie den Datenträger in GPT.</translation>
    </message>
    <message>
        <source>If you&apos;re looking to transfer all your data from one hard drive to another, we recommend using the [Clone Disk] function. It creates a complete copy of your entire hard disk.</source>
        <translation>Wenn Sie alle Daten von einer Festplatte auf eine andere übertragen möchten, empfehlen wir die Funktion [Datenträger klonen]. Sie erstellt eine vollständige Kopie Ihrer gesamten Festplatte.</translation>
    </message>
    <message>
        <source>If you need to transfer your entire operating system to a new hard drive, we recommend using the [Clone OS Disk] function. It creates a full copy of your system disk, including the OS, installed programs, and settings.</source>
        <translation>Wenn Sie Ihr gesamtes Betriebssystem auf eine neue Festplatte übertragen möchten, empfehlen wir die Funktion [Systemdatenträger klonen]. Sie erstellt eine vollständige Kopie Ihres Systemdatenträgers einschließlich Betriebssystem, installierter Programme und Einstellungen.</translation>
    </message>
    <message>
        <source>If you need to transfer a specific partition to another hard drive, we recommend using the [Clone Partition] function. It creates an exact copy of your partition data, including files and settings.</source>
        <translation>Wenn Sie eine bestimmte Partition auf eine andere Festplatte übertragen möchten, empfehlen wir die Funktion [Partition klonen]. Sie erstellt eine exakte Kopie Ihrer Partitionsdaten einschließlich Dateien und Einstellungen.</translation>
    </message>
    <message>
        <source>If your hard drive exceeds 2TB and isn&apos;t fully recognized, or if you&apos;re preparing to install Windows 11, we recommend using the [Convert to GPT] function. It resolves capacity recognition issues and ensures your drive is ready for modern systems like Windows 11.</source>
        <translation>Wenn Ihre Festplatte größer als 2 TB ist und nicht vollständig erkannt wird oder wenn Sie die Installation von Windows 11 vorbereiten, empfehlen wir die Funktion [In GPT konvertieren]. Sie behebt Probleme bei der Erkennung der Kapazität und macht Ihre Festplatte bereit für moderne Systeme wie Windows 11.</translation>
    </message>
    <message>
        <source>If you&apos;re using older devices or systems, we recommend using the [Convert to MBR] function. It ensures compatibility with legacy hardware and operating systems, making it easier to use your hard drive in older environments.</source>
        <translation>Wenn Sie ältere Geräte oder Systeme verwenden, empfehlen wir die Funktion [In MBR konvertieren]. Sie sorgt für Kompatibilität mit älterer Hardware und älteren Betriebssystemen, sodass Sie Ihre Festplatte in älteren Umgebungen leichter einsetzen können.</translation>
    </message>
    <message>
        <source>Are you trying to convert a dynamic disk back to a basic disk? The [Convert to Basic Disk] function can help! It allows you to easily switch your disk type, making it compatible with standard storage configurations.</source>
        <translation>Möchten Sie einen dynamischen Datenträger wieder in einen Basisdatenträger konvertieren? Dabei hilft die Funktion [In Basisdatenträger konvertieren]! Damit wechseln Sie mühelos den Datenträgertyp und machen den Datenträger kompatibel mit üblichen Speicherkonfigurationen.</translation>
    </message>
    <message>
        <source>Are you trying to expand your storage capabilities? The [Convert to Dynamic Disk] function can help! It allows you to convert your basic disk to a dynamic disk, enabling advanced features like creating spanned, striped, or mirrored volumes for better storage management.</source>
        <translation>Möchten Sie Ihre Speichermöglichkeiten erweitern? Dabei hilft die Funktion [In dynamischen Datenträger konvertieren]! Damit konvertieren Sie Ihren Basisdatenträger in einen dynamischen Datenträger, der erweiterte Funktionen wie übergreifende, Stripeset- oder gespiegelte Volumes für eine bessere Speicherverwaltung ermöglicht.</translation>
    </message>
    <message>
        <source>If you&apos;re running out of disk space, we recommend trying the [Allocation Space] function. It allows you to easily adjust partition sizes, freeing up space and ensuring your system runs smoothly without storage limitations.</source>
        <translation>Wenn der Speicherplatz knapp wird, empfehlen wir die Funktion [Speicherplatz zuweisen]. Damit passen Sie Partitionsgrößen mühelos an, schaffen Platz und sorgen dafür, dass Ihr System ohne Speicherengpässe reibungslos läuft.</translation>
    </message>
    <message>
        <source>If you need to optimize your partition&apos;s performance or storage efficiency, we recommend using the [Change Cluster Size] function. It allows you to adjust the cluster size, helping you better manage disk space and improve file system performance.</source>
        <translation>Wenn Sie die Leistung oder die Speichernutzung Ihrer Partition optimieren möchten, empfehlen wir die Funktion [Clustergröße ändern]. Damit passen Sie die Clustergröße an, nutzen den Speicherplatz besser und verbessern die Leistung des Dateisystems.</translation>
    </message>
    <message>
        <source>If you need to reorganize your drives or resolve conflicts, we recommend using the [Change Drive Letter] function. It allows you to easily assign a new drive letter to your partition, making it easier to manage and access your storage.</source>
        <translation>Wenn Sie Ihre Laufwerke neu ordnen oder Konflikte beheben möchten, empfehlen wir die Funktion [Laufwerkbuchstaben ändern]. Damit weisen Sie Ihrer Partition mühelos einen neuen Laufwerkbuchstaben zu, sodass Sie Ihren Speicher leichter verwalten und erreichen können.</translation>
    </message>
    <message>
        <source>If you need to convert a logical partition to a primary partition, we recommend using the [Convert to Primary] function. It allows you to easily change the partition type, ensuring compatibility with operating systems and boot requirements.</source>
        <translation>Wenn Sie eine logische Partition in eine primäre Partition konvertieren möchten, empfehlen wir die Funktion [In primäre Partition konvertieren]. Damit ändern Sie mühelos den Partitionstyp und sorgen für Kompatibilität mit Betriebssystemen und Startanforderungen.</translation>
    </message>
    <message>
        <source>If you need to upgrade your FAT partition to support larger files and better performance, we recommend using the [Convert to exFAT] function. It allows you to easily convert your partition to exFAT, ensuring compatibility with modern devices and improved storage efficiency.</source>
        <translation>Wenn Ihre FAT-Partition größere Dateien und bessere Leistung unterstützen soll, empfehlen wir die Funktion [In exFAT konvertieren]. Damit konvertieren Sie Ihre Partition mühelos in exFAT und sorgen für Kompatibilität mit modernen Geräten und für eine bessere Speichernutzung.</translation>
    </message>
    <message>
        <source>If you need to convert an NTFS partition to FAT for compatibility with older devices or systems, we recommend using the [Convert to FAT] function. It allows you to easily change the file system, ensuring seamless use with legacy hardware and software.</source>
        <translation>Wenn Sie eine NTFS-Partition aus Gründen der Kompatibilität mit älteren Geräten oder Systemen in FAT konvertieren möchten, empfehlen wir die Funktion [In FAT konvertieren]. Damit ändern Sie mühelos das Dateisystem und können es problemlos mit älterer Hardware und Software verwenden.</translation>
    </message>
    <message>
        <source>If you need to upgrade your FAT partition to NTFS, we recommend using the [Convert to NTFS] function. It allows you to easily change the file system, ensuring improved reliability and compatibility with modern systems.</source>
        <translation>Wenn Sie Ihre FAT-Partition auf NTFS umstellen möchten, empfehlen wir die Funktion [In NTFS konvertieren]. Damit ändern Sie mühelos das Dateisystem und profitieren von höherer Zuverlässigkeit und besserer Kompatibilität mit modernen Systemen.</translation>
    </message>
    <message>
        <source>If you need to reorganize your disk layout and convert a primary partition to a logical partition, we recommend using the [Convert to Logical] function. It allows you to easily adjust your partition structure, making it more flexible for managing multiple partitions on your drive.</source>
        <translation>Wenn Sie Ihr Datenträgerlayout neu ordnen und eine primäre Partition in eine logische Partition konvertieren möchten, empfehlen wir die Funktion [In logische Partition konvertieren]. Damit passen Sie Ihre Partitionsstruktur mühelos an und können mehrere Partitionen auf Ihrem Laufwerk flexibler verwalten.</translation>
    </message>
    <message>
        <source>If you need to organize your hard drive by creating separate storage spaces, we recommend using the [Create Partition] function. It allows you to easily create new partitions, helping you better manage your files and improve disk efficiency.</source>
        <translation>Wenn Sie Ihre Festplatte in getrennte Speicherbereiche gliedern möchten, empfehlen wir die Funktion [Partition erstellen]. Damit erstellen Sie mühelos neue Partitionen, verwalten Ihre Dateien besser und nutzen die Festplatte effizienter.</translation>
    </message>
    <message>
        <source>If you need to completely clear your hard drive and remove all partitions, we recommend using the [Delete All] function. It allows you to quickly and securely erase all partitions, preparing your disk for a fresh start or new configurations.</source>
        <translation>Wenn Sie Ihre Festplatte vollständig leeren und alle Partitionen entfernen möchten, empfehlen wir die Funktion [Alle löschen]. Damit löschen Sie schnell und sicher alle Partitionen und bereiten Ihren Datenträger auf einen Neuanfang oder eine neue Konfiguration vor.</translation>
    </message>
    <message>
        <source>If you need to remove a specific partition from your hard drive, we recommend using the [Delete] function. It allows you to easily delete the partition, freeing up space for new storage or reorganizing your disk layout.</source>
        <translation>Wenn Sie eine bestimmte Partition von Ihrer Festplatte entfernen möchten, empfehlen wir die Funktion [Löschen]. Damit löschen Sie die Partition mühelos und schaffen Platz für neue Daten oder ordnen Ihr Datenträgerlayout neu.</translation>
    </message>
    <message>
        <source>If you need to prepare a partition for use or clear its data, we recommend using the [Format] function. It allows you to easily format the partition, ensuring it&apos;s clean, organized, and ready for new files or operating systems.</source>
        <translation>Wenn Sie eine Partition für die Verwendung vorbereiten oder ihre Daten löschen möchten, empfehlen wir die Funktion [Formatieren]. Damit formatieren Sie die Partition mühelos, sodass sie sauber, geordnet und bereit für neue Dateien oder Betriebssysteme ist.</translation>
    </message>
    <message>
        <source>If you&apos;re setting up a new hard drive or need to prepare an uninitialized disk for use, we recommend using the [Initialize Disk] function. It allows you to quickly initialize the disk, making it ready for partitioning and storing data.</source>
        <translation>Wenn Sie eine neue Festplatte einrichten oder einen nicht initialisierten Datenträger für die Verwendung vorbereiten möchten, empfehlen wir die Funktion [Datenträger initialisieren]. Damit initialisieren Sie den Datenträger schnell und machen ihn bereit zum Partitionieren und Speichern von Daten.</translation>
    </message>
    <message>
        <source>If you need to combine two partitions into a single, larger one, we recommend using the [Merge] function. It allows you to easily merge partitions, freeing up space and simplifying your disk management.</source>
        <translation>Wenn Sie zwei Partitionen zu einer größeren verbinden möchten, empfehlen wir die Funktion [Zusammenführen]. Damit führen Sie Partitionen mühelos zusammen, schaffen Platz und vereinfachen die Verwaltung Ihrer Datenträger.</translation>
    </message>
    <message>
        <source>If you need to resize your partitions to better manage disk space, we recommend using the [Adjust Layout] function. It allows you to easily adjust partition sizes, ensuring your storage is optimized for your needs.</source>
        <translation>Wenn Sie die Größe Ihrer Partitionen ändern möchten, um den Speicherplatz besser zu nutzen, empfehlen wir die Funktion [Layout anpassen]. Damit passen Sie Partitionsgrößen mühelos an und stimmen Ihren Speicher auf Ihren Bedarf ab.</translation>
    </message>
    <message>
        <source>If you need to reorganize your disk space by moving or resizing partitions, we recommend using the [Resize/Move] function. It allows you to easily adjust partition sizes and locations, ensuring your storage is optimized for better performance and efficiency.</source>
        <translation>Wenn Sie Ihren Speicherplatz durch Verschieben von Partitionen oder Ändern ihrer Größe neu ordnen möchten, empfehlen wir die Funktion [Größe ändern/Verschieben]. Damit passen Sie Größe und Lage von Partitionen mühelos an und optimieren Ihren Speicher für bessere Leistung und Effizienz.</translation>
    </message>
    <message>
        <source>If you need to divide a large partition into two smaller ones for better organization, we recommend using the [Split] function. It allows you to easily split the partition, helping you manage your files and storage more efficiently.</source>
        <translation>Wenn Sie eine große Partition zur besseren Übersicht in zwei kleinere aufteilen möchten, empfehlen wir die Funktion [Teilen]. Damit teilen Sie die Partition mühelos und verwalten Ihre Dateien und Ihren Speicher effizienter.</translation>
    </message>
    <message>
        <source>If you need to securely and permanently erase all data from your hard disk, we recommend using the [Wipe Disk] function. It ensures that your data is completely removed, making it unrecoverable and preparing the disk for reuse or disposal.</source>
        <translation>Wenn Sie alle Daten auf Ihrer Festplatte sicher und endgültig löschen möchten, empfehlen wir die Funktion [Datenträger sicher löschen]. Sie sorgt dafür, dass Ihre Daten vollständig entfernt und nicht wiederherstellbar sind, und bereitet den Datenträger auf die Weiterverwendung oder Entsorgung vor.</translation>
    </message>
    <message>
        <source>If you need to securely and permanently erase all data from a specific partition, we recommend using the [Wipe Partition] function. It ensures that your data is completely removed, making it unrecoverable and preparing the partition for reuse or reallocation.</source>
        <translation>Wenn Sie alle Daten auf einer bestimmten Partition sicher und endgültig löschen möchten, empfehlen wir die Funktion [Partition sicher löschen]. Sie sorgt dafür, dass Ihre Daten vollständig entfernt und nicht wiederherstellbar sind, und bereitet die Partition auf die Weiterverwendung oder Neuzuweisung vor.</translation>
    </message>
    <message>
        <source>Accept</source>
        <translation>Annehmen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Drive %1 has low space. We recommend using &quot;Smart Layout Adjust&quot; to quickly expand %2 drive space!</source>
        <translation>Auf Laufwerk %1 ist wenig Speicherplatz frei. Wir empfehlen, mit „Intelligente Layoutanpassung“ den Speicherplatz von Laufwerk %2 schnell zu erweitern!</translation>
    </message>
    <message>
        <source>Drive %1 has low space. We recommend using the &quot;Data Migration&quot; feature to free up more space on %2 drive!</source>
        <translation>Auf Laufwerk %1 ist wenig Speicherplatz frei. Wir empfehlen, mit der Funktion „Datenmigration“ mehr Speicherplatz auf Laufwerk %2 zu schaffen!</translation>
    </message>
    <message>
        <source>Drive %1 has low space. We recommend using &quot;Smart Layout Adjust&quot; to adjust the disk layout with one click!</source>
        <translation>Auf Laufwerk %1 ist wenig Speicherplatz frei. Wir empfehlen, mit „Intelligente Layoutanpassung“ das Datenträgerlayout mit einem Klick anzupassen!</translation>
    </message>
    <message>
        <source>We recommend converting the file system of the large external disk %1 to ExFAT for better performance and cross-platform accessibility! </source>
        <translation>Wir empfehlen, das Dateisystem des großen externen Datenträgers %1 in ExFAT zu konvertieren, um die Leistung zu verbessern und von anderen Systemen aus darauf zugreifen zu können! </translation>
    </message>
    <message>
        <source>For users with BitLocker encryption on %1 drive, we recommend creating a secure USB drive. In the event of a system boot failure, the secure USB drive can boot the computer and access data on the encrypted disk!</source>
        <translation>Wenn Laufwerk %1 mit BitLocker verschlüsselt ist, empfehlen wir, ein sicheres USB-Laufwerk zu erstellen. Wenn das System nicht mehr startet, können Sie den Computer mit diesem USB-Laufwerk starten und auf die Daten des verschlüsselten Datenträgers zugreifen!</translation>
    </message>
    <message>
        <source>A Raw partition was detected on the system. We recommend repairing the Raw partition as soon as possible to avoid permanent data loss!</source>
        <translation>Auf dem System wurde eine RAW-Partition erkannt. Wir empfehlen, die RAW-Partition so bald wie möglich zu reparieren, um einen dauerhaften Datenverlust zu vermeiden!</translation>
    </message>
    <message>
        <source>Drive %1 is locked by BitLocker. You can use BitLocker Key Finder to recover your BitLocker recovery key if you forget the password!</source>
        <translation>Laufwerk %1 ist mit BitLocker gesperrt. Wenn Sie das Kennwort vergessen haben, können Sie Ihren BitLocker-Wiederherstellungsschlüssel mit der BitLocker-Schlüsselsuche ermitteln!</translation>
    </message>
    <message>
        <source>Windows 10 support ends soon! To install Windows 11, convert your system disk to GPT first.</source>
        <translation>Der Support für Windows 10 endet bald! Um Windows 11 zu installieren, konvertieren Sie zuerst Ihren Systemdatenträger in GPT.</translation>
    </message>
    <message>
        <source>Convert today</source>
        <translation>Heute konvertieren</translation>
    </message>
    <message>
        <source>Windows 10 support ends soon! Your device may not be compatible with Windows 11.</source>
        <translation>Der Support für Windows 10 endet bald! Ihr Gerät ist möglicherweise nicht mit Windows 11 kompatibel.</translation>
    </message>
    <message>
        <source>See upgrade options</source>
        <translation>Upgrade-Optionen anzeigen</translation>
    </message>
    <message>
        <source>Windows 10 support ends soon! Your PC is ready for Windows 11.</source>
        <translation>Der Support für Windows 10 endet bald! Ihr PC ist bereit für Windows 11.</translation>
    </message>
    <message>
        <source>Learn more</source>
        <translation>Mehr erfahren</translation>
    </message>
</context>
</TS>
