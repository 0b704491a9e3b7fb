<?xml version='1.0' encoding='utf-8'?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>AddContactDialog</name>
    <message>
        <source>Add to address book</source>
        <translation>Zum Adressbuch hinzufügen</translation>
    </message>
    <message>
        <source>home</source>
        <translation>privat</translation>
    </message>
    <message>
        <source>work</source>
        <translation>geschäftlich</translation>
    </message>
    <message>
        <source>mobile</source>
        <translation>mobil</translation>
    </message>
    <message>
        <source>main</source>
        <translation>Hauptnummer</translation>
    </message>
    <message>
        <source>other</source>
        <translation>andere</translation>
    </message>
    <message>
        <source>First name:</source>
        <translation>Vorname:</translation>
    </message>
    <message>
        <source>Last name:</source>
        <translation>Nachname:</translation>
    </message>
    <message>
        <source>Company:</source>
        <translation>Firma:</translation>
    </message>
    <message>
        <source>Number:</source>
        <translation>Nummer:</translation>
    </message>
    <message>
        <source>Label:</source>
        <translation>Bezeichnung:</translation>
    </message>
    <message>
        <source>Enter a name or a company.</source>
        <translation>Geben Sie einen Namen oder eine Firma ein.</translation>
    </message>
    <message>
        <source>Enter the number.</source>
        <translation>Geben Sie die Nummer ein.</translation>
    </message>
    <message>
        <source>The contact could not be added: %1</source>
        <translation>Der Kontakt konnte nicht hinzugefügt werden: %1</translation>
    </message>
</context>
<context>
    <name>CallListGroups</name>
    <message>
        <source>Incoming</source>
        <translation>Angenommen</translation>
    </message>
    <message>
        <source>Outgoing</source>
        <translation>Ausgehend</translation>
    </message>
    <message>
        <source>Missed</source>
        <translation>Verpasst</translation>
    </message>
    <message>
        <source>All calls</source>
        <translation>Alle Anrufe</translation>
    </message>
    <message>
        <source>Current calls</source>
        <translation>Aktuelle Anrufe</translation>
    </message>
    <message>
        <source>New calls</source>
        <translation>Neue Anrufe</translation>
    </message>
</context>
<context>
    <name>CallListModel</name>
    <message>
        <source>Incoming</source>
        <translation>Angenommen</translation>
    </message>
    <message>
        <source>Missed</source>
        <translation>Verpasst</translation>
    </message>
    <message>
        <source>Outgoing</source>
        <translation>Ausgehend</translation>
    </message>
    <message>
        <source>1 call</source>
        <translation>1 Anruf</translation>
    </message>
    <message>
        <source>%1 calls</source>
        <translation>%1 Anrufe</translation>
    </message>
    <message>
        <source>withheld</source>
        <translation>unterdrückt</translation>
    </message>
    <message>
        <source>Date</source>
        <translation>Datum</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Number</source>
        <translation>Nummer</translation>
    </message>
    <message>
        <source>Extension</source>
        <translation>Nebenstelle</translation>
    </message>
    <message>
        <source>Line</source>
        <translation>Leitung</translation>
    </message>
    <message>
        <source>Duration</source>
        <translation>Dauer</translation>
    </message>
</context>
<context>
    <name>CallListSettingsPage</name>
    <message>
        <source>Import the router's call list after every call</source>
        <translation>Die Anrufliste der FRITZ!Box nach jedem Anruf importieren</translation>
    </message>
    <message>
        <source>Import the call list when Tondrel starts</source>
        <translation>Die Anrufliste beim Start von Tondrel importieren</translation>
    </message>
    <message>
        <source> days</source>
        <translation> Tage</translation>
    </message>
    <message>
        <source>never</source>
        <translation>nie</translation>
    </message>
    <message>
        <source>Delete calls older than:</source>
        <translation>Anrufe löschen, die älter sind als:</translation>
    </message>
    <message>
        <source>Date format:</source>
        <translation>Datumsformat:</translation>
    </message>
    <message>
        <source>Example: %1</source>
        <translation>Beispiel: %1</translation>
    </message>
</context>
<context>
    <name>CallListWindow</name>
    <message>
        <source>Search calls</source>
        <translation>Anrufe durchsuchen</translation>
    </message>
    <message>
        <source>All columns</source>
        <translation>Alle Spalten</translation>
    </message>
    <message>
        <source>Date</source>
        <translation>Datum</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Number</source>
        <translation>Nummer</translation>
    </message>
    <message>
        <source>Extension</source>
        <translation>Nebenstelle</translation>
    </message>
    <message>
        <source>Line</source>
        <translation>Leitung</translation>
    </message>
    <message>
        <source>Duration</source>
        <translation>Dauer</translation>
    </message>
    <message>
        <source>Call list</source>
        <translation>Anrufliste</translation>
    </message>
    <message>
        <source>Call list – %1</source>
        <translation>Anrufliste – %1</translation>
    </message>
    <message>
        <source>%1+ calls</source>
        <translation>%1+ Anrufe</translation>
    </message>
    <message>
        <source>1 call</source>
        <translation>1 Anruf</translation>
    </message>
    <message>
        <source>%1 calls</source>
        <translation>%1 Anrufe</translation>
    </message>
    <message>
        <source>Call number</source>
        <translation>Nummer anrufen</translation>
    </message>
    <message>
        <source>Copy number</source>
        <translation>Nummer kopieren</translation>
    </message>
    <message>
        <source>Copy call details</source>
        <translation>Anrufdetails kopieren</translation>
    </message>
    <message>
        <source>Memo…</source>
        <translation>Notiz…</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Reload</source>
        <translation>Aktualisieren</translation>
    </message>
    <message>
        <source>Read the new calls from the router</source>
        <translation>Die neuen Anrufe von der FRITZ!Box lesen</translation>
    </message>
    <message>
        <source>Import file…</source>
        <translation>Datei importieren…</translation>
    </message>
    <message>
        <source>Export…</source>
        <translation>Exportieren…</translation>
    </message>
    <message>
        <source>Statistics</source>
        <translation>Statistik</translation>
    </message>
    <message>
        <source>New call</source>
        <translation>Neuer Anruf</translation>
    </message>
    <message>
        <source>Delete calls</source>
        <translation>Anrufe löschen</translation>
    </message>
    <message>
        <source>Delete the selected call from the call list?</source>
        <translation>Den ausgewählten Anruf aus der Anrufliste löschen?</translation>
    </message>
    <message>
        <source>Delete the %1 selected calls from the call list?</source>
        <translation>Die %1 ausgewählten Anrufe aus der Anrufliste löschen?</translation>
    </message>
    <message>
        <source>The calls could not be deleted: the call database refused it.</source>
        <translation>Die Anrufe konnten nicht gelöscht werden: Die Anrufdatenbank hat es abgelehnt.</translation>
    </message>
    <message>
        <source>Reading the call list from the router…</source>
        <translation>Die Anrufliste wird von der FRITZ!Box gelesen…</translation>
    </message>
    <message>
        <source>Import a call journal</source>
        <translation>Eine Anrufliste importieren</translation>
    </message>
    <message>
        <source>Call journals (*.csv *.txt);;All files (*)</source>
        <translation>Anruflisten (*.csv *.txt);;Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Importing %1…</source>
        <translation>Importiere %1…</translation>
    </message>
    <message>
        <source>%1 is not a call journal.</source>
        <translation>%1 ist keine Anrufliste.</translation>
    </message>
    <message>
        <source>No new calls in %1.</source>
        <translation>Keine neuen Anrufe in %1.</translation>
    </message>
    <message>
        <source>1 call imported from %1.</source>
        <translation>1 Anruf aus %1 importiert.</translation>
    </message>
    <message>
        <source>%1 calls imported from %2.</source>
        <translation>%1 Anrufe aus %2 importiert.</translation>
    </message>
    <message>
        <source>Export calls</source>
        <translation>Anrufe exportieren</translation>
    </message>
    <message>
        <source>Delimited text (*.csv *.txt)</source>
        <translation>Text mit Trennzeichen (*.csv *.txt)</translation>
    </message>
    <message>
        <source>%1 could not be written: %2</source>
        <translation>%1 konnte nicht geschrieben werden: %2</translation>
    </message>
    <message>
        <source>Calls exported to %1.</source>
        <translation>Anrufe nach %1 exportiert.</translation>
    </message>
    <message>
        <source>Add this number to the address book as a new contact</source>
        <translation>Diese Nummer als neuen Kontakt zum Adressbuch hinzufügen</translation>
    </message>
    <message>
        <source>No address book is configured: choose a vCard file under Settings, General.</source>
        <translation>Es ist kein Adressbuch eingerichtet: Wählen Sie unter Einstellungen, Allgemein eine vCard-Datei.</translation>
    </message>
    <message>
        <source>New smart list…</source>
        <translation>Neue intelligente Liste…</translation>
    </message>
    <message>
        <source>A saved filter of the calls, shown in the side list</source>
        <translation>Ein gespeicherter Filter der Anrufe, in der Seitenliste gezeigt</translation>
    </message>
    <message>
        <source>Look up online</source>
        <translation>Online suchen</translation>
    </message>
    <message>
        <source>Ask the web directories for the name of this number</source>
        <translation>Die Web-Verzeichnisse nach dem Namen dieser Nummer fragen</translation>
    </message>
    <message>
        <source>Add to address book…</source>
        <translation>Zum Adressbuch hinzufügen…</translation>
    </message>
    <message>
        <source>Looking up %1…</source>
        <translation>Suche %1…</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1 was added to the address book.</source>
        <translation>%1 wurde zum Adressbuch hinzugefügt.</translation>
    </message>
    <message>
        <source>Delete smart list</source>
        <translation>Intelligente Liste löschen</translation>
    </message>
    <message>
        <source>Delete the smart list “%1”? The calls stay in the call list.</source>
        <translation>Die intelligente Liste „%1“ löschen? Die Anrufe bleiben in der Anrufliste.</translation>
    </message>
    <message>
        <source>The smart list could not be deleted: the call database refused it.</source>
        <translation>Die intelligente Liste konnte nicht gelöscht werden: Die Anrufdatenbank hat es abgelehnt.</translation>
    </message>
    <message>
        <source>Edit…</source>
        <translation>Bearbeiten…</translation>
    </message>
    <message>
        <source>Delete…</source>
        <translation>Löschen…</translation>
    </message>
</context>
<context>
    <name>CallMemoDialog</name>
    <message>
        <source>withheld number</source>
        <translation>unterdrückte Nummer</translation>
    </message>
    <message>
        <source>Call with %1</source>
        <translation>Anruf mit %1</translation>
    </message>
    <message>
        <source>Memo – %1</source>
        <translation>Notiz – %1</translation>
    </message>
    <message>
        <source>Call:</source>
        <translation>Anruf:</translation>
    </message>
    <message>
        <source>The memo could not be saved: the call database refused it.</source>
        <translation>Die Notiz konnte nicht gespeichert werden: Die Anrufdatenbank hat sie abgelehnt.</translation>
    </message>
</context>
<context>
    <name>CallMonitorWindow</name>
    <message>
        <source>Call monitor – Tondrel</source>
        <translation>Anrufmonitor – Tondrel</translation>
    </message>
    <message>
        <source>State</source>
        <translation>Status</translation>
    </message>
    <message>
        <source>Number</source>
        <translation>Nummer</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Extension</source>
        <translation>Nebenstelle</translation>
    </message>
    <message>
        <source>Line</source>
        <translation>Leitung</translation>
    </message>
    <message>
        <source>Duration</source>
        <translation>Dauer</translation>
    </message>
    <message>
        <source>Memo…</source>
        <translation>Notiz…</translation>
    </message>
    <message>
        <source>Clear list</source>
        <translation>Liste leeren</translation>
    </message>
    <message>
        <source>Menu</source>
        <translation>Menü</translation>
    </message>
    <message>
        <source>Ringing</source>
        <translation>Klingelt</translation>
    </message>
    <message>
        <source>Dialling…</source>
        <translation>Wählt…</translation>
    </message>
    <message>
        <source>Calling</source>
        <translation>Ruft an</translation>
    </message>
    <message>
        <source>Connected</source>
        <translation>Verbunden</translation>
    </message>
    <message>
        <source>Ended</source>
        <translation>Beendet</translation>
    </message>
    <message>
        <source>Missed</source>
        <translation>Verpasst</translation>
    </message>
    <message>
        <source>No answer</source>
        <translation>Nicht angenommen</translation>
    </message>
    <message>
        <source>withheld</source>
        <translation>unterdrückt</translation>
    </message>
    <message>
        <source>Has a memo</source>
        <translation>Hat eine Notiz</translation>
    </message>
    <message>
        <source>Not connected to the router's call monitor</source>
        <translation>Nicht mit dem Anrufmonitor der FRITZ!Box verbunden</translation>
    </message>
    <message>
        <source>1 call</source>
        <translation>1 Anruf</translation>
    </message>
    <message>
        <source>%1 calls</source>
        <translation>%1 Anrufe</translation>
    </message>
</context>
<context>
    <name>CallStatisticsDialog</name>
    <message>
        <source>Call statistics</source>
        <translation>Anrufstatistik</translation>
    </message>
    <message>
        <source>All years</source>
        <translation>Alle Jahre</translation>
    </message>
    <message>
        <source>Calls</source>
        <translation>Anrufe</translation>
    </message>
    <message>
        <source>Incoming</source>
        <translation>Angenommen</translation>
    </message>
    <message>
        <source>Outgoing</source>
        <translation>Ausgehend</translation>
    </message>
    <message>
        <source>Missed</source>
        <translation>Verpasst</translation>
    </message>
    <message>
        <source>Talk time</source>
        <translation>Gesprächszeit</translation>
    </message>
    <message>
        <source>Total</source>
        <translation>Gesamt</translation>
    </message>
    <message>
        <source>Year:</source>
        <translation>Jahr:</translation>
    </message>
</context>
<context>
    <name>DialWindow</name>
    <message>
        <source>New call – Tondrel</source>
        <translation>Neuer Anruf – Tondrel</translation>
    </message>
    <message>
        <source>Number, name or tel: link</source>
        <translation>Nummer, Name oder tel:-Link</translation>
    </message>
    <message>
        <source>Dial</source>
        <translation>Wählen</translation>
    </message>
    <message>
        <source>Hang up</source>
        <translation>Auflegen</translation>
    </message>
    <message>
        <source>Number:</source>
        <translation>Nummer:</translation>
    </message>
    <message>
        <source>Dials:</source>
        <translation>Gewählt wird:</translation>
    </message>
    <message>
        <source>Contact:</source>
        <translation>Kontakt:</translation>
    </message>
    <message>
        <source>Ring first:</source>
        <translation>Zuerst klingelt:</translation>
    </message>
    <message>
        <source>–</source>
        <translation>–</translation>
    </message>
    <message>
        <source>unknown</source>
        <translation>unbekannt</translation>
    </message>
    <message>
        <source>Dial %1?</source>
        <translation>%1 wählen?</translation>
    </message>
    <message>
        <source>Dial %1 (%2)?</source>
        <translation>%1 (%2) wählen?</translation>
    </message>
    <message>
        <source>Dialling %1 …</source>
        <translation>Wähle %1 …</translation>
    </message>
    <message>
        <source>Hanging up …</source>
        <translation>Lege auf …</translation>
    </message>
    <message>
        <source>The router is calling: pick up the handset of “%1”.</source>
        <translation>Die FRITZ!Box ruft an: Heben Sie den Hörer von „%1“ ab.</translation>
    </message>
    <message>
        <source>Hung up.</source>
        <translation>Aufgelegt.</translation>
    </message>
    <message>
        <source>The router did not take the command.</source>
        <translation>Die FRITZ!Box hat den Befehl nicht angenommen.</translation>
    </message>
</context>
<context>
    <name>ExtensionsMenu</name>
    <message>
        <source>Extensions</source>
        <translation>Nebenstellen</translation>
    </message>
    <message>
        <source>No extensions known</source>
        <translation>Keine Nebenstellen bekannt</translation>
    </message>
</context>
<context>
    <name>FtpSettingsPage</name>
    <message>
        <source>Voicemail messages and faxes are fetched from the router's storage over FTP.</source>
        <translation>Nachrichten des Anrufbeantworters und Faxe werden per FTP vom Speicher der FRITZ!Box geholt.</translation>
    </message>
    <message>
        <source>FTP user:</source>
        <translation>FTP-Benutzer:</translation>
    </message>
    <message>
        <source>FTP password:</source>
        <translation>FTP-Kennwort:</translation>
    </message>
    <message>
        <source>FTP port:</source>
        <translation>FTP-Port:</translation>
    </message>
    <message>
        <source>Encrypt the connection (FTP over TLS)</source>
        <translation>Verbindung verschlüsseln (FTP über TLS)</translation>
    </message>
</context>
<context>
    <name>GeneralSettingsPage</name>
    <message>
        <source>a vCard file (.vcf)</source>
        <translation>eine vCard-Datei (.vcf)</translation>
    </message>
    <message>
        <source>Choose…</source>
        <translation>Auswählen…</translation>
    </message>
    <message>
        <source>Address book:</source>
        <translation>Adressbuch:</translation>
    </message>
    <message>
        <source>System tray only</source>
        <translation>Nur im Infobereich</translation>
    </message>
    <message>
        <source>Taskbar only</source>
        <translation>Nur in der Taskleiste</translation>
    </message>
    <message>
        <source>System tray and taskbar</source>
        <translation>Im Infobereich und in der Taskleiste</translation>
    </message>
    <message>
        <source>Show Tondrel in:</source>
        <translation>Tondrel zeigen:</translation>
    </message>
    <message>
        <source>Open the call list window at start</source>
        <translation>Beim Start die Anrufliste öffnen</translation>
    </message>
    <message>
        <source>Keep the call monitor window above other windows</source>
        <translation>Das Anrufmonitor-Fenster über anderen Fenstern halten</translation>
    </message>
    <message>
        <source>Update the online directories for caller lookup at start</source>
        <translation>Beim Start die Online-Verzeichnisse für die Rückwärtssuche aktualisieren</translation>
    </message>
    <message>
        <source>Internet traffic:</source>
        <translation>Internetverkehr:</translation>
    </message>
    <message>
        <source>Show the traffic in the tray</source>
        <translation>Den Verkehr im Infobereich zeigen</translation>
    </message>
    <message>
        <source>as figures</source>
        <translation>als Zahlen</translation>
    </message>
    <message>
        <source>as a graph</source>
        <translation>als Grafik</translation>
    </message>
    <message>
        <source>Open the traffic window at start</source>
        <translation>Beim Start den Onlinemonitor öffnen</translation>
    </message>
    <message>
        <source>Choose the address book</source>
        <translation>Adressbuch auswählen</translation>
    </message>
    <message>
        <source>vCard files (*.vcf);;All files (*)</source>
        <translation>vCard-Dateien (*.vcf);;Alle Dateien (*)</translation>
    </message>
    <message>
        <source>There is no file %1.</source>
        <translation>Die Datei %1 gibt es nicht.</translation>
    </message>
</context>
<context>
    <name>GlobalPage</name>
    <message>
        <source>These settings apply to all locations.</source>
        <translation>Diese Einstellungen gelten für alle Standorte.</translation>
    </message>
</context>
<context>
    <name>LatestCallsMenu</name>
    <message>
        <source>Latest calls</source>
        <translation>Letzte Anrufe</translation>
    </message>
    <message>
        <source>Incoming</source>
        <translation>Angenommen</translation>
    </message>
    <message>
        <source>Missed</source>
        <translation>Verpasst</translation>
    </message>
    <message>
        <source>No calls yet</source>
        <translation>Noch keine Anrufe</translation>
    </message>
    <message>
        <source>yesterday %1</source>
        <translation>gestern %1</translation>
    </message>
    <message>
        <source>d MMM</source>
        <translation>d. MMM</translation>
    </message>
</context>
<context>
    <name>LocationsMenu</name>
    <message>
        <source>Locations</source>
        <translation>Standorte</translation>
    </message>
</context>
<context>
    <name>LoginPage</name>
    <message>
        <source>Login</source>
        <translation>Anmeldung</translation>
    </message>
    <message>
        <source>User name:</source>
        <translation>Benutzername:</translation>
    </message>
    <message>
        <source>Password:</source>
        <translation>Kennwort:</translation>
    </message>
</context>
<context>
    <name>MemoEditor</name>
    <message>
        <source>Call</source>
        <translation>Anruf</translation>
    </message>
    <message>
        <source>Call with %1</source>
        <translation>Anruf mit %1</translation>
    </message>
    <message>
        <source>Memo – %1</source>
        <translation>Notiz – %1</translation>
    </message>
    <message>
        <source>withheld number</source>
        <translation>unterdrückte Nummer</translation>
    </message>
    <message>
        <source>The memo could not be saved: the call is no longer listed or the call database refused it.</source>
        <translation>Die Notiz konnte nicht gespeichert werden: Der Anruf ist nicht mehr in der Liste oder die Anrufdatenbank hat sie abgelehnt.</translation>
    </message>
</context>
<context>
    <name>MemoForm</name>
    <message>
        <source>Subject:</source>
        <translation>Betreff:</translation>
    </message>
    <message>
        <source>Note:</source>
        <translation>Notiz:</translation>
    </message>
</context>
<context>
    <name>MonitorSettingsPage</name>
    <message>
        <source>Watch calls through the router's call monitor</source>
        <translation>Anrufe über den Anrufmonitor der FRITZ!Box verfolgen</translation>
    </message>
    <message>
        <source>Show a desktop notification for each call</source>
        <translation>Für jeden Anruf eine Desktop-Benachrichtigung zeigen</translation>
    </message>
    <message>
        <source>Offer call options in the call monitor window</source>
        <translation>Anrufoptionen im Anrufmonitor-Fenster anbieten</translation>
    </message>
    <message>
        <source>Close the call monitor window when the call has ended</source>
        <translation>Das Anrufmonitor-Fenster schließen, wenn der Anruf beendet ist</translation>
    </message>
    <message>
        <source>Look up unknown callers in online directories</source>
        <translation>Unbekannte Anrufer in Online-Verzeichnissen suchen</translation>
    </message>
    <message>
        <source>Without any notification the call monitor window opens for each call.</source>
        <translation>Ohne Benachrichtigung öffnet sich für jeden Anruf das Anrufmonitor-Fenster.</translation>
    </message>
</context>
<context>
    <name>PhonebookContactDialog</name>
    <message>
        <source>Important person (rings even when calls are blocked)</source>
        <translation>Wichtige Person (klingelt auch bei Klingelsperre)</translation>
    </message>
    <message>
        <source>New contact on the router</source>
        <translation>Neuer Kontakt auf der FRITZ!Box</translation>
    </message>
    <message>
        <source>Name:</source>
        <translation>Name:</translation>
    </message>
    <message>
        <source>Home:</source>
        <translation>Privat:</translation>
    </message>
    <message>
        <source>Mobile:</source>
        <translation>Mobil:</translation>
    </message>
    <message>
        <source>Work:</source>
        <translation>Geschäftlich:</translation>
    </message>
</context>
<context>
    <name>PhonebookWindow</name>
    <message>
        <source>home</source>
        <translation>privat</translation>
    </message>
    <message>
        <source>mobile</source>
        <translation>mobil</translation>
    </message>
    <message>
        <source>work</source>
        <translation>geschäftlich</translation>
    </message>
    <message>
        <source>Router phone book – Tondrel</source>
        <translation>Telefonbuch der FRITZ!Box – Tondrel</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Numbers</source>
        <translation>Rufnummern</translation>
    </message>
    <message>
        <source>Reload</source>
        <translation>Aktualisieren</translation>
    </message>
    <message>
        <source>Add contact…</source>
        <translation>Kontakt hinzufügen…</translation>
    </message>
    <message>
        <source>Address book group:</source>
        <translation>Adressbuchgruppe:</translation>
    </message>
    <message>
        <source>Send to the router…</source>
        <translation>An die FRITZ!Box senden…</translation>
    </message>
    <message>
        <source>Replaces the router's phone book with the contacts of the group.</source>
        <translation>Ersetzt das Telefonbuch der FRITZ!Box durch die Kontakte der Gruppe.</translation>
    </message>
    <message>
        <source>Replace the router's phone book with the %1 contacts of "%2"? Entries on the router that are not in the group are lost.</source>
        <translation>Das Telefonbuch der FRITZ!Box durch die %1 Kontakte von „%2“ ersetzen? Einträge auf der FRITZ!Box, die nicht in der Gruppe sind, gehen verloren.</translation>
    </message>
    <message>
        <source>The address book has no groups (vCard categories).</source>
        <translation>Das Adressbuch hat keine Gruppen (vCard-Kategorien).</translation>
    </message>
    <message>
        <source>No router is set up yet.</source>
        <translation>Es ist noch keine FRITZ!Box eingerichtet.</translation>
    </message>
    <message>
        <source>1 contact on the router.</source>
        <translation>1 Kontakt auf der FRITZ!Box.</translation>
    </message>
    <message>
        <source>%1 contacts on the router.</source>
        <translation>%1 Kontakte auf der FRITZ!Box.</translation>
    </message>
    <message>
        <source>Reading the router's phone book…</source>
        <translation>Das Telefonbuch der FRITZ!Box wird gelesen…</translation>
    </message>
    <message>
        <source>Important person</source>
        <translation>Wichtige Person</translation>
    </message>
    <message>
        <source>Adding %1 to the router's phone book…</source>
        <translation>%1 wird zum Telefonbuch der FRITZ!Box hinzugefügt…</translation>
    </message>
    <message>
        <source>%1 was added to the router's phone book.</source>
        <translation>%1 wurde zum Telefonbuch der FRITZ!Box hinzugefügt.</translation>
    </message>
    <message>
        <source>Sending "%1" to the router…</source>
        <translation>„%1“ wird an die FRITZ!Box gesendet…</translation>
    </message>
    <message>
        <source>The router's phone book now holds the contacts of "%1".</source>
        <translation>Das Telefonbuch der FRITZ!Box enthält jetzt die Kontakte von „%1“.</translation>
    </message>
</context>
<context>
    <name>QObject</name>
    <message>
        <source>%1

Start with default settings? The old file stays where it was copied.</source>
        <translation>%1

Mit Standardeinstellungen starten? Die alte Datei bleibt, wohin sie kopiert wurde.</translation>
    </message>
</context>
<context>
    <name>ReadPage</name>
    <message>
        <source>Router settings</source>
        <translation>Einstellungen der FRITZ!Box</translation>
    </message>
    <message>
        <source>Reading the router's settings…</source>
        <translation>Die Einstellungen der FRITZ!Box werden gelesen…</translation>
    </message>
    <message>
        <source>The router's settings were read.</source>
        <translation>Die Einstellungen der FRITZ!Box wurden gelesen.</translation>
    </message>
    <message>
        <source>Dialling code: %1</source>
        <translation>Vorwahl: %1</translation>
    </message>
    <message>
        <source>Dial port: %1</source>
        <translation>Wählanschluss: %1</translation>
    </message>
    <message>
        <source>Own numbers: %1</source>
        <translation>Eigene Rufnummern: %1</translation>
    </message>
    <message>
        <source>Remote access: %1</source>
        <translation>Fernzugang: %1</translation>
    </message>
    <message>
        <source>Router users: %1</source>
        <translation>Benutzer der FRITZ!Box: %1</translation>
    </message>
</context>
<context>
    <name>RemotePage</name>
    <message>
        <source>Remote access</source>
        <translation>Fernzugang</translation>
    </message>
    <message>
        <source>optional, e.g. abc123.myfritz.net</source>
        <translation>optional, z. B. abc123.myfritz.net</translation>
    </message>
    <message>
        <source>Internet address:</source>
        <translation>Internetadresse:</translation>
    </message>
    <message>
        <source>HTTPS port:</source>
        <translation>HTTPS-Port:</translation>
    </message>
    <message>
        <source>User name:</source>
        <translation>Benutzername:</translation>
    </message>
</context>
<context>
    <name>RemoteSettingsPage</name>
    <message>
        <source>Reach the router from outside over HTTPS</source>
        <translation>Die FRITZ!Box von unterwegs über HTTPS erreichen</translation>
    </message>
    <message>
        <source>e.g. myname.myfritz.net</source>
        <translation>z. B. meinname.myfritz.net</translation>
    </message>
    <message>
        <source>Remote host:</source>
        <translation>Adresse für den Fernzugang:</translation>
    </message>
    <message>
        <source>HTTPS port:</source>
        <translation>HTTPS-Port:</translation>
    </message>
    <message>
        <source>Remote user:</source>
        <translation>Benutzer für den Fernzugang:</translation>
    </message>
    <message>
        <source>Remote password:</source>
        <translation>Kennwort für den Fernzugang:</translation>
    </message>
    <message>
        <source>Certificate:</source>
        <translation>Zertifikat:</translation>
    </message>
    <message>
        <source>Tondrel remembers the router's certificate the first time it connects from outside and refuses a different one afterwards, so nobody can pose as your router. If the router really got a new certificate (after a reset or a firmware update), forget the stored one: the next connection remembers the new certificate.</source>
        <translation>Tondrel merkt sich das Zertifikat der FRITZ!Box bei der ersten Verbindung von unterwegs und lehnt danach ein anderes ab, damit sich niemand als Ihre FRITZ!Box ausgeben kann. Hat die FRITZ!Box wirklich ein neues Zertifikat (nach einem Zurücksetzen oder einem Firmware-Update), vergessen Sie das gespeicherte: Die nächste Verbindung merkt sich das neue Zertifikat.</translation>
    </message>
    <message>
        <source>Forget the stored certificate</source>
        <translation>Gespeichertes Zertifikat vergessen</translation>
    </message>
    <message>
        <source>None stored; the next connection stores it.</source>
        <translation>Keines gespeichert; die nächste Verbindung speichert es.</translation>
    </message>
    <message>
        <source>Stored: %1</source>
        <translation>Gespeichert: %1</translation>
    </message>
</context>
<context>
    <name>RouterChoicePage</name>
    <message>
        <source>Router</source>
        <translation>FRITZ!Box</translation>
    </message>
    <message>
        <source>Search again</source>
        <translation>Erneut suchen</translation>
    </message>
    <message>
        <source>Address:</source>
        <translation>Adresse:</translation>
    </message>
    <message>
        <source>Searching for routers on the network…</source>
        <translation>Suche nach FRITZ!Boxen im Netzwerk…</translation>
    </message>
    <message>
        <source>No router answered. Enter its address below.</source>
        <translation>Keine FRITZ!Box hat geantwortet. Geben Sie ihre Adresse unten ein.</translation>
    </message>
    <message>
        <source>One router found.</source>
        <translation>Eine FRITZ!Box gefunden.</translation>
    </message>
    <message>
        <source>%1 routers found.</source>
        <translation>%1 FRITZ!Boxen gefunden.</translation>
    </message>
</context>
<context>
    <name>RouterSettingsPage</name>
    <message>
        <source>Name:</source>
        <translation>Name:</translation>
    </message>
    <message>
        <source>Host name or address:</source>
        <translation>Hostname oder Adresse:</translation>
    </message>
    <message>
        <source>Web interface port:</source>
        <translation>Port der Benutzeroberfläche:</translation>
    </message>
    <message>
        <source>none (password only)</source>
        <translation>keiner (nur Kennwort)</translation>
    </message>
    <message>
        <source>User name:</source>
        <translation>Benutzername:</translation>
    </message>
    <message>
        <source>Password:</source>
        <translation>Kennwort:</translation>
    </message>
    <message>
        <source>Kept in the desktop's password store, not in the settings file.</source>
        <translation>Wird in der Kennwortverwaltung des Desktops aufbewahrt, nicht in der Einstellungsdatei.</translation>
    </message>
    <message>
        <source>TR-064 port:</source>
        <translation>TR-064-Port:</translation>
    </message>
    <message>
        <source>Call monitor port:</source>
        <translation>Port des Anrufmonitors:</translation>
    </message>
</context>
<context>
    <name>SavePage</name>
    <message>
        <source>“%1” on %2</source>
        <translation>„%1“ auf %2</translation>
    </message>
</context>
<context>
    <name>SettingsForm</name>
    <message>
        <source>Enter a port number from 1 to 65535.</source>
        <translation>Geben Sie eine Portnummer von 1 bis 65535 ein.</translation>
    </message>
    <message>
        <source>Enter the router's host name or address.</source>
        <translation>Geben Sie den Hostnamen oder die Adresse der FRITZ!Box ein.</translation>
    </message>
    <message>
        <source>Enter only the host name or address, without blanks, scheme or path.</source>
        <translation>Geben Sie nur den Hostnamen oder die Adresse ein, ohne Leerzeichen, Schema oder Pfad.</translation>
    </message>
    <message>
        <source>Only digits, without + or blanks.</source>
        <translation>Nur Ziffern, ohne + und Leerzeichen.</translation>
    </message>
    <message>
        <source>Enter a date pattern such as dd.MM.yyyy HH:mm.</source>
        <translation>Geben Sie ein Datumsmuster wie dd.MM.yyyy HH:mm ein.</translation>
    </message>
</context>
<context>
    <name>SettingsWindow</name>
    <message>
        <source>Tondrel Settings</source>
        <translation>Tondrel-Einstellungen</translation>
    </message>
    <message>
        <source>Locations:</source>
        <translation>Standorte:</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Hinzufügen</translation>
    </message>
    <message>
        <source>Remove…</source>
        <translation>Entfernen…</translation>
    </message>
    <message>
        <source>Make current</source>
        <translation>Als aktuellen wählen</translation>
    </message>
    <message>
        <source>The current location (in bold) is the router Tondrel works with.</source>
        <translation>Der aktuelle Standort (fett) ist die FRITZ!Box, mit der Tondrel arbeitet.</translation>
    </message>
    <message>
        <source>Router</source>
        <translation>FRITZ!Box</translation>
    </message>
    <message>
        <source>Telephony</source>
        <translation>Telefonie</translation>
    </message>
    <message>
        <source>Call monitor</source>
        <translation>Anrufmonitor</translation>
    </message>
    <message>
        <source>Remote access</source>
        <translation>Fernzugang</translation>
    </message>
    <message>
        <source>Voicemail and fax</source>
        <translation>Anrufbeantworter und Fax</translation>
    </message>
    <message>
        <source>Call list</source>
        <translation>Anrufliste</translation>
    </message>
    <message>
        <source>General</source>
        <translation>Allgemein</translation>
    </message>
    <message>
        <source>Please correct the marked fields.</source>
        <translation>Bitte korrigieren Sie die markierten Felder.</translation>
    </message>
    <message>
        <source>Location added. Enter its router's details and save.</source>
        <translation>Standort hinzugefügt. Geben Sie die Daten seiner FRITZ!Box ein und speichern Sie.</translation>
    </message>
    <message>
        <source>Remove location</source>
        <translation>Standort entfernen</translation>
    </message>
    <message>
        <source>Remove the location "%1"? Its passwords and its calls in the call list are deleted as well. This cannot be undone.</source>
        <translation>Den Standort „%1“ entfernen? Seine Kennwörter und seine Anrufe in der Anrufliste werden ebenfalls gelöscht. Das lässt sich nicht rückgängig machen.</translation>
    </message>
    <message>
        <source>Location "%1" removed.</source>
        <translation>Standort „%1“ entfernt.</translation>
    </message>
    <message>
        <source>The settings of "%1" could not be written.</source>
        <translation>Die Einstellungen von „%1“ konnten nicht geschrieben werden.</translation>
    </message>
    <message>
        <source>The passwords of "%1" could not be stored: %2</source>
        <translation>Die Kennwörter von „%1“ konnten nicht gespeichert werden: %2</translation>
    </message>
    <message>
        <source>The settings file could not be written.</source>
        <translation>Die Einstellungsdatei konnte nicht geschrieben werden.</translation>
    </message>
</context>
<context>
    <name>SetupWizard</name>
    <message>
        <source>Set up a router</source>
        <translation>FRITZ!Box einrichten</translation>
    </message>
</context>
<context>
    <name>SmartListEditor</name>
    <message>
        <source>Edit smart list</source>
        <translation>Intelligente Liste bearbeiten</translation>
    </message>
    <message>
        <source>New smart list</source>
        <translation>Neue intelligente Liste</translation>
    </message>
    <message>
        <source>all rules</source>
        <translation>alle Regeln</translation>
    </message>
    <message>
        <source>any rule</source>
        <translation>eine der Regeln</translation>
    </message>
    <message>
        <source>Add rule</source>
        <translation>Regel hinzufügen</translation>
    </message>
    <message>
        <source>Name:</source>
        <translation>Name:</translation>
    </message>
    <message>
        <source>Calls matching:</source>
        <translation>Passende Anrufe:</translation>
    </message>
    <message>
        <source>The smart list needs a name.</source>
        <translation>Die intelligente Liste braucht einen Namen.</translation>
    </message>
    <message>
        <source>no count yet</source>
        <translation>noch nicht gezählt</translation>
    </message>
    <message>
        <source>1 matching call</source>
        <translation>1 passender Anruf</translation>
    </message>
    <message>
        <source>%1 matching calls</source>
        <translation>%1 passende Anrufe</translation>
    </message>
    <message>
        <source>The smart list could not be saved: the call database refused it.</source>
        <translation>Die intelligente Liste konnte nicht gespeichert werden: Die Anrufdatenbank hat es abgelehnt.</translation>
    </message>
</context>
<context>
    <name>SmartRuleRow</name>
    <message>
        <source>Date</source>
        <translation>Datum</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Number</source>
        <translation>Nummer</translation>
    </message>
    <message>
        <source>Extension</source>
        <translation>Nebenstelle</translation>
    </message>
    <message>
        <source>Line</source>
        <translation>Leitung</translation>
    </message>
    <message>
        <source>Duration</source>
        <translation>Dauer</translation>
    </message>
    <message>
        <source>Call type</source>
        <translation>Anrufart</translation>
    </message>
    <message>
        <source>Remove this rule</source>
        <translation>Diese Regel entfernen</translation>
    </message>
    <message>
        <source>day, 1–31</source>
        <translation>Tag, 1–31</translation>
    </message>
    <message>
        <source>month, 1–12</source>
        <translation>Monat, 1–12</translation>
    </message>
    <message>
        <source>year, e.g. 2026</source>
        <translation>Jahr, z. B. 2026</translation>
    </message>
    <message>
        <source>number of days</source>
        <translation>Anzahl Tage</translation>
    </message>
    <message>
        <source>The day must be a number from 1 to 31.</source>
        <translation>Der Tag muss eine Zahl von 1 bis 31 sein.</translation>
    </message>
    <message>
        <source>The month must be a number from 1 to 12.</source>
        <translation>Der Monat muss eine Zahl von 1 bis 12 sein.</translation>
    </message>
    <message>
        <source>The year must have four digits.</source>
        <translation>Das Jahr muss vier Ziffern haben.</translation>
    </message>
    <message>
        <source>The number of days must be a positive number.</source>
        <translation>Die Anzahl der Tage muss eine positive Zahl sein.</translation>
    </message>
</context>
<context>
    <name>TNStatusMenu</name>
    <message>
        <source>Call monitor connected</source>
        <translation>Anrufmonitor verbunden</translation>
    </message>
    <message>
        <source>Call monitor not connected</source>
        <translation>Anrufmonitor nicht verbunden</translation>
    </message>
</context>
<context>
    <name>TNTrafficChart</name>
    <message>
        <source>max %1 kbit/s</source>
        <translation>max. %1 kbit/s</translation>
    </message>
</context>
<context>
    <name>TelephonySettingsPage</name>
    <message>
        <source>International prefix</source>
        <translation>Internationale Vorwahl</translation>
    </message>
    <message>
        <source>Country code</source>
        <translation>Landesvorwahl</translation>
    </message>
    <message>
        <source>Trunk prefix</source>
        <translation>Verkehrsausscheidungsziffer</translation>
    </message>
    <message>
        <source>Area code</source>
        <translation>Ortsvorwahl</translation>
    </message>
    <message>
        <source>Dialling context:</source>
        <translation>Vorwahlen:</translation>
    </message>
    <message>
        <source>Dial from:</source>
        <translation>Wählen von:</translation>
    </message>
    <message>
        <source>Ask before dialling</source>
        <translation>Vor dem Wählen fragen</translation>
    </message>
    <message>
        <source>Withhold my number on outgoing calls</source>
        <translation>Meine Rufnummer bei ausgehenden Anrufen unterdrücken</translation>
    </message>
    <message>
        <source>Telephones (shown ones appear in the menu and the dial window):</source>
        <translation>Telefone (gezeigte erscheinen im Menü und im Wählfenster):</translation>
    </message>
    <message>
        <source>Number</source>
        <translation>Nummer</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Show</source>
        <translation>Zeigen</translation>
    </message>
    <message>
        <source>Own numbers:</source>
        <translation>Eigene Rufnummern:</translation>
    </message>
    <message>
        <source>Hide in call monitor</source>
        <translation>Im Anrufmonitor ausblenden</translation>
    </message>
    <message>
        <source>Hide in call list</source>
        <translation>In der Anrufliste ausblenden</translation>
    </message>
    <message>
        <source>Not chosen</source>
        <translation>Nicht gewählt</translation>
    </message>
    <message>
        <source>Port %1</source>
        <translation>Port %1</translation>
    </message>
</context>
<context>
    <name>TrafficFigures</name>
    <message>
        <source>Internet</source>
        <translation>Internet</translation>
    </message>
    <message>
        <source>TV</source>
        <translation>TV</translation>
    </message>
    <message>
        <source>Real-time (telephony)</source>
        <translation>Echtzeit (Telefonie)</translation>
    </message>
    <message>
        <source>Prioritised</source>
        <translation>Priorisiert</translation>
    </message>
    <message>
        <source>Default</source>
        <translation>Standard</translation>
    </message>
    <message>
        <source>Background</source>
        <translation>Hintergrund</translation>
    </message>
</context>
<context>
    <name>TrafficWindow</name>
    <message>
        <source>Online monitor – Tondrel</source>
        <translation>Onlinemonitor – Tondrel</translation>
    </message>
    <message>
        <source>⬇ Downstream</source>
        <translation>⬇ Downstream</translation>
    </message>
    <message>
        <source>⬆ Upstream</source>
        <translation>⬆ Upstream</translation>
    </message>
</context>
<context>
    <name>TrayApplication</name>
    <message>
        <source>1 new call</source>
        <translation>1 neuer Anruf</translation>
    </message>
    <message>
        <source>%1 new calls</source>
        <translation>%1 neue Anrufe</translation>
    </message>
</context>
<context>
    <name>TrayArguments</name>
    <message>
        <source>Tondrel sits in the tray, shows who is calling and controls your FRITZ!Box.
A second start hands its requests to the running Tondrel.</source>
        <translation>Tondrel sitzt im Infobereich, zeigt, wer anruft, und steuert Ihre FRITZ!Box.
Ein zweiter Start übergibt seine Aufträge an das laufende Tondrel.</translation>
    </message>
    <message>
        <source>Show this help and exit.</source>
        <translation>Diese Hilfe zeigen und beenden.</translation>
    </message>
    <message>
        <source>Show the version and exit.</source>
        <translation>Die Version zeigen und beenden.</translation>
    </message>
    <message>
        <source>Open the new-call window.</source>
        <translation>Das Fenster für einen neuen Anruf öffnen.</translation>
    </message>
    <message>
        <source>Open the call list.</source>
        <translation>Die Anrufliste öffnen.</translation>
    </message>
    <message>
        <source>Settings folder (default ~/.config/Tondrel).</source>
        <translation>Ordner der Einstellungen (Standard ~/.config/Tondrel).</translation>
    </message>
    <message>
        <source>Data folder with the call database (default ~/.local/share/Tondrel).</source>
        <translation>Datenordner mit der Anrufdatenbank (Standard ~/.local/share/Tondrel).</translation>
    </message>
    <message>
        <source>Where passwords are kept: keyring (default) or file.</source>
        <translation>Wo Kennwörter liegen: keyring (Schlüsselbund, Standard) oder file (Datei).</translation>
    </message>
    <message>
        <source>A tel:, callto: or dial: link: opens the new-call window with its number.</source>
        <translation>Ein tel:-, callto:- oder dial:-Link: öffnet das Fenster für einen neuen Anruf mit seiner Nummer.</translation>
    </message>
    <message>
        <source>Try 'tondrel --help'.</source>
        <translation>Siehe 'tondrel --help'.</translation>
    </message>
    <message>
        <source>--secrets is keyring or file, not %1.
</source>
        <translation>--secrets ist keyring oder file, nicht %1.
</translation>
    </message>
    <message>
        <source>Open the answering machine and fax window.</source>
        <translation>Das Fenster für Anrufbeantworter und Fax öffnen.</translation>
    </message>
</context>
<context>
    <name>TrayMenu</name>
    <message>
        <source>Call monitor window</source>
        <translation>Anrufmonitor-Fenster</translation>
    </message>
    <message>
        <source>New call…</source>
        <translation>Neuer Anruf…</translation>
    </message>
    <message>
        <source>Wi-Fi</source>
        <translation>WLAN</translation>
    </message>
    <message>
        <source>Call monitor</source>
        <translation>Anrufmonitor</translation>
    </message>
    <message>
        <source>Remote access</source>
        <translation>Fernzugang</translation>
    </message>
    <message>
        <source>Set up a router…</source>
        <translation>FRITZ!Box einrichten…</translation>
    </message>
    <message>
        <source>Quit Tondrel</source>
        <translation>Tondrel beenden</translation>
    </message>
    <message>
        <source>Online monitor</source>
        <translation>Onlinemonitor</translation>
    </message>
    <message>
        <source>Call list</source>
        <translation>Anrufliste</translation>
    </message>
    <message>
        <source>Settings…</source>
        <translation>Einstellungen…</translation>
    </message>
    <message>
        <source>Answering machine and fax</source>
        <translation>Anrufbeantworter und Fax</translation>
    </message>
    <message>
        <source>Router phone book</source>
        <translation>Telefonbuch der FRITZ!Box</translation>
    </message>
    <message>
        <source>DECT</source>
        <translation>DECT</translation>
    </message>
    <message>
        <source>Switch DECT off? Cordless telephones can then neither ring nor make calls.</source>
        <translation>DECT ausschalten? Schnurlose Telefone können dann weder klingeln noch telefonieren.</translation>
    </message>
</context>
<context>
    <name>VoicemailListModel</name>
    <message>
        <source>Machine %1</source>
        <translation>Anrufbeantworter %1</translation>
    </message>
    <message>
        <source>Machine %1 (%2)</source>
        <translation>Anrufbeantworter %1 (%2)</translation>
    </message>
    <message>
        <source>Number withheld</source>
        <translation>Rufnummer unterdrückt</translation>
    </message>
    <message>
        <source>New</source>
        <translation>Neu</translation>
    </message>
    <message>
        <source>Date</source>
        <translation>Datum</translation>
    </message>
    <message>
        <source>Caller</source>
        <translation>Anrufer</translation>
    </message>
    <message>
        <source>Sender</source>
        <translation>Absender</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Answering machine</source>
        <translation>Anrufbeantworter</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Datei</translation>
    </message>
    <message>
        <source>Duration</source>
        <translation>Dauer</translation>
    </message>
</context>
<context>
    <name>VoicemailWindow</name>
    <message>
        <source>Answering machine and fax</source>
        <translation>Anrufbeantworter und Fax</translation>
    </message>
    <message>
        <source>Reload</source>
        <translation>Aktualisieren</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>Abspielen</translation>
    </message>
    <message>
        <source>Save as…</source>
        <translation>Speichern unter…</translation>
    </message>
    <message>
        <source>Delete…</source>
        <translation>Löschen…</translation>
    </message>
    <message>
        <source>Messages</source>
        <translation>Nachrichten</translation>
    </message>
    <message>
        <source>Answering machine</source>
        <translation>Anrufbeantworter</translation>
    </message>
    <message>
        <source>Fax</source>
        <translation>Fax</translation>
    </message>
    <message>
        <source>No router is set up yet.</source>
        <translation>Es ist noch keine FRITZ!Box eingerichtet.</translation>
    </message>
    <message>
        <source>The location has no router address.</source>
        <translation>Der Standort hat keine Adresse der FRITZ!Box.</translation>
    </message>
    <message>
        <source>Answering machine and fax – %1</source>
        <translation>Anrufbeantworter und Fax – %1</translation>
    </message>
    <message>
        <source>Reading the router's storage…</source>
        <translation>Der Speicher der FRITZ!Box wird gelesen…</translation>
    </message>
    <message>
        <source>Reading the router's storage was cancelled.</source>
        <translation>Das Lesen des Speichers der FRITZ!Box wurde abgebrochen.</translation>
    </message>
    <message>
        <source>1 message</source>
        <translation>1 Nachricht</translation>
    </message>
    <message>
        <source>%1 messages</source>
        <translation>%1 Nachrichten</translation>
    </message>
    <message>
        <source>1 fax</source>
        <translation>1 Fax</translation>
    </message>
    <message>
        <source>%1 faxes</source>
        <translation>%1 Faxe</translation>
    </message>
    <message>
        <source>%1 (%2 new), %3 (%4 new)</source>
        <translation>%1 (%2 neu), %3 (%4 neu)</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>The transfer was cancelled.</source>
        <translation>Die Übertragung wurde abgebrochen.</translation>
    </message>
    <message>
        <source>No program on this desktop opens %1.</source>
        <translation>Kein Programm auf diesem Desktop öffnet %1.</translation>
    </message>
    <message>
        <source>Fetching the fax…</source>
        <translation>Das Fax wird geholt…</translation>
    </message>
    <message>
        <source>Fetching the message…</source>
        <translation>Die Nachricht wird geholt…</translation>
    </message>
    <message>
        <source>PDF documents (*.pdf)</source>
        <translation>PDF-Dokumente (*.pdf)</translation>
    </message>
    <message>
        <source>WAV audio (*.wav)</source>
        <translation>WAV-Audio (*.wav)</translation>
    </message>
    <message>
        <source>Save fax</source>
        <translation>Fax speichern</translation>
    </message>
    <message>
        <source>Save message</source>
        <translation>Nachricht speichern</translation>
    </message>
    <message>
        <source>%1 could not be read: %2</source>
        <translation>%1 konnte nicht gelesen werden: %2</translation>
    </message>
    <message>
        <source>%1 could not be written: %2</source>
        <translation>%1 konnte nicht geschrieben werden: %2</translation>
    </message>
    <message>
        <source>Saved as %1.</source>
        <translation>Gespeichert als %1.</translation>
    </message>
    <message>
        <source>Delete this fax from the router?</source>
        <translation>Dieses Fax von der FRITZ!Box löschen?</translation>
    </message>
    <message>
        <source>Delete %1 faxes from the router?</source>
        <translation>%1 Faxe von der FRITZ!Box löschen?</translation>
    </message>
    <message>
        <source>Delete this message from the answering machine?</source>
        <translation>Diese Nachricht vom Anrufbeantworter löschen?</translation>
    </message>
    <message>
        <source>Delete %1 messages from the answering machine?</source>
        <translation>%1 Nachrichten vom Anrufbeantworter löschen?</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Deleting…</source>
        <translation>Wird gelöscht…</translation>
    </message>
</context>
</TS>