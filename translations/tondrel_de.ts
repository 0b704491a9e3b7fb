<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en">
<context>
    <name>Tondrel</name>
    <message>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation>Unbekannt</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>Ja</translation>
    </message>
    <message>
        <source>No</source>
        <translation>Nein</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Location</source>
        <translation>Standort</translation>
    </message>
    <message>
        <source>The password for the router is wrong.</source>
        <translation>Das Kennwort für die FRITZ!Box ist falsch.</translation>
    </message>
    <message>
        <source>No password is set for remote access. Enter it in the location&apos;s settings.</source>
        <translation>Für den Fernzugang ist kein Kennwort eingetragen. Bitte tragen Sie es in den Einstellungen des Standorts ein.</translation>
    </message>
    <message>
        <source>The router refused the remote access login. Check the user name and password for remote access.</source>
        <translation>Die FRITZ!Box hat die Anmeldung über den Fernzugang abgelehnt. Bitte prüfen Sie Benutzername und Kennwort für den Fernzugang.</translation>
    </message>
    <message>
        <source>After failed logins the router refuses further logins for %1 seconds.</source>
        <extracomment>%1: block time in seconds, as the router sent it</extracomment>
        <translation>Nach fehlgeschlagenen Anmeldungen lehnt die FRITZ!Box weitere Anmeldungen für %1 Sekunden ab.</translation>
    </message>
    <message>
        <source>The router asked for a login that Tondrel does not accept (unexpected challenge).</source>
        <translation>Die FRITZ!Box hat eine Anmeldung verlangt, die Tondrel nicht annimmt (unerwartete Challenge).</translation>
    </message>
    <message>
        <source>The router user lacks the right this action needs. Check the user&apos;s rights on the router.</source>
        <translation>Dem FRITZ!Box-Benutzer fehlt das für diese Aktion nötige Recht. Bitte prüfen Sie die Rechte des Benutzers in der FRITZ!Box.</translation>
    </message>
    <message>
        <source>The router&apos;s certificate for remote access has changed. The connection was refused; accept the new certificate in the location&apos;s settings if you trust it.</source>
        <translation>Das Zertifikat der FRITZ!Box für den Fernzugang hat sich geändert. Die Verbindung wurde abgelehnt; akzeptieren Sie das neue Zertifikat in den Einstellungen des Orts, wenn Sie ihm vertrauen.</translation>
    </message>
    <message>
        <source>The router cannot be reached at %1.</source>
        <translation>Die FRITZ!Box ist unter %1 nicht erreichbar.</translation>
    </message>
    <message>
        <source>The router does not allow access for applications (TR-064). Turn it on in the router&apos;s home network settings.</source>
        <translation>Die FRITZ!Box erlaubt keinen Zugriff für Anwendungen (TR-064). Bitte aktivieren Sie ihn in den Heimnetz-Einstellungen der FRITZ!Box.</translation>
    </message>
    <message>
        <source>The router user is not allowed to perform this action (TR-064 error 606).</source>
        <translation>Der FRITZ!Box-Benutzer darf diese Aktion nicht ausführen (TR-064-Fehler 606).</translation>
    </message>
    <message>
        <source>The router reported TR-064 error %1: %2</source>
        <extracomment>%1: error code, %2: error description from the router</extracomment>
        <translation>Die FRITZ!Box meldet den TR-064-Fehler %1: %2</translation>
    </message>
    <message>
        <source>Incoming call</source>
        <translation>Eingehender Anruf</translation>
    </message>
    <message>
        <source>Outgoing call</source>
        <translation>Ausgehender Anruf</translation>
    </message>
    <message>
        <source>Please pick up the handset</source>
        <translation>Bitte Hörer abnehmen</translation>
    </message>
    <message>
        <source>Call ended</source>
        <translation>Gespräch beendet</translation>
    </message>
    <message>
        <source>Missed call</source>
        <translation>Anruf in Abwesenheit</translation>
    </message>
    <message>
        <source>No answer</source>
        <translation>Nicht erreicht</translation>
    </message>
    <message>
        <source>Number withheld</source>
        <translation>Rufnummer unterdrückt</translation>
    </message>
    <message>
        <source>Unknown caller</source>
        <translation>Unbekannter Anrufer</translation>
    </message>
    <message>
        <source>Duration:</source>
        <translation>Dauer:</translation>
    </message>
    <message>
        <source>Time:</source>
        <translation>Zeit:</translation>
    </message>
    <message>
        <source>Line:</source>
        <translation>Leitung:</translation>
    </message>
    <message>
        <source>Home</source>
        <translation>Privat</translation>
    </message>
    <message>
        <source>Work</source>
        <translation>Arbeit</translation>
    </message>
    <message>
        <source>Mobile</source>
        <translation>Mobil</translation>
    </message>
    <message>
        <source>Main</source>
        <translation>Hauptnummer</translation>
    </message>
    <message>
        <source>iPhone</source>
        <translation>iPhone</translation>
    </message>
    <message>
        <source>Other</source>
        <translation>Andere</translation>
    </message>
    <message>
        <source>Fax</source>
        <translation>Fax</translation>
    </message>
    <message>
        <source>Pager</source>
        <translation>Pager</translation>
    </message>
    <message>
        <source>First name</source>
        <translation>Vorname</translation>
    </message>
    <message>
        <source>First name initial</source>
        <translation>Initiale des Vornamens</translation>
    </message>
    <message>
        <source>Last name</source>
        <translation>Nachname</translation>
    </message>
    <message>
        <source>Last name initial</source>
        <translation>Initiale des Nachnamens</translation>
    </message>
    <message>
        <source>Company</source>
        <translation>Firma</translation>
    </message>
    <message>
        <source>One entry per number, with label</source>
        <translation>Ein Eintrag je Rufnummer, mit Bezeichnung</translation>
    </message>
    <message>
        <source>One entry per number, with short label</source>
        <translation>Ein Eintrag je Rufnummer, mit kurzer Bezeichnung</translation>
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
        <translation>Rufnummer</translation>
    </message>
    <message>
        <source>Extension</source>
        <translation>Nebenstelle</translation>
    </message>
    <message>
        <source>Line</source>
        <translation>Eigene Rufnummer</translation>
    </message>
    <message>
        <source>Duration</source>
        <translation>Dauer</translation>
    </message>
    <message>
        <source>Label</source>
        <translation>Bezeichnung</translation>
    </message>
    <message>
        <source>Call type</source>
        <translation>Anruftyp</translation>
    </message>
    <message>
        <source>Call this number</source>
        <translation>Diese Rufnummer anrufen</translation>
    </message>
    <message>
        <source>Copy number</source>
        <translation>Rufnummer kopieren</translation>
    </message>
    <message>
        <source>Copy call details</source>
        <translation>Anrufdetails kopieren</translation>
    </message>
    <message>
        <source>No name was found for this number.</source>
        <translation>Für diese Rufnummer wurde kein Name gefunden.</translation>
    </message>
    <message>
        <source>Incoming calls</source>
        <translation>Eingehende Anrufe</translation>
    </message>
    <message>
        <source>Outgoing calls</source>
        <translation>Ausgehende Anrufe</translation>
    </message>
    <message>
        <source>Missed calls</source>
        <translation>Verpasste Anrufe</translation>
    </message>
    <message>
        <source>New calls</source>
        <translation>Neue Anrufe</translation>
    </message>
    <message>
        <source>Today</source>
        <translation>Heute</translation>
    </message>
    <message>
        <source>This month</source>
        <translation>Dieser Monat</translation>
    </message>
    <message>
        <source>This year</source>
        <translation>Dieses Jahr</translation>
    </message>
    <message>
        <source>Day of month</source>
        <translation>Tag im Monat</translation>
    </message>
    <message>
        <source>Month</source>
        <translation>Monat</translation>
    </message>
    <message>
        <source>Year</source>
        <translation>Jahr</translation>
    </message>
    <message>
        <source>In the last … days</source>
        <translation>In den letzten … Tagen</translation>
    </message>
    <message>
        <source>Exactly … days ago</source>
        <translation>Vor genau … Tagen</translation>
    </message>
    <message>
        <source>is</source>
        <translation>ist</translation>
    </message>
    <message>
        <source>is not</source>
        <translation>ist nicht</translation>
    </message>
    <message>
        <source>contains</source>
        <translation>enthält</translation>
    </message>
    <message>
        <source>does not contain</source>
        <translation>enthält nicht</translation>
    </message>
    <message>
        <source>ISDN devices</source>
        <translation>ISDN-Geräte</translation>
    </message>
    <message>
        <source>Turn off Wi-Fi</source>
        <translation>WLAN ausschalten</translation>
    </message>
    <message>
        <source>Do you really want to turn off the router&apos;s Wi-Fi? Devices that use it, this computer included, will lose their connection.</source>
        <translation>Möchten Sie das WLAN der FRITZ!Box wirklich ausschalten? Geräte, die es nutzen, auch dieser Computer, verlieren dann ihre Verbindung.</translation>
    </message>
    <message>
        <source>Internet</source>
        <translation>Internet</translation>
    </message>
    <message>
        <source>TV</source>
        <translation>Fernsehen</translation>
    </message>
    <message>
        <source>Real-time</source>
        <translation>Echtzeit</translation>
    </message>
    <message>
        <source>Prioritised</source>
        <translation>Priorisiert</translation>
    </message>
    <message>
        <source>Normal</source>
        <translation>Normal</translation>
    </message>
    <message>
        <source>Background</source>
        <translation>Hintergrund</translation>
    </message>
    <message>
        <source>Voicemail / Fax</source>
        <translation>Anrufbeantworter / Fax</translation>
    </message>
    <message>
        <source>Home network</source>
        <translation>Heimnetz</translation>
    </message>
    <message>
        <source>Remote access</source>
        <translation>Fernzugang</translation>
    </message>
    <message>
        <source>No voicemail or fax folder was found on the router&apos;s storage.</source>
        <translation>Auf dem Speicher der FRITZ!Box wurde kein Ordner für Anrufbeantworter oder Fax gefunden.</translation>
    </message>
    <message>
        <source>Login to the router&apos;s storage refused (home network)</source>
        <translation>Anmeldung am Speicher der FRITZ!Box abgelehnt (Heimnetz)</translation>
    </message>
    <message>
        <source>Login to the router&apos;s storage refused (remote access)</source>
        <translation>Anmeldung am Speicher der FRITZ!Box abgelehnt (Fernzugang)</translation>
    </message>
    <message>
        <source>Wrong user name or password for the router&apos;s storage</source>
        <translation>Falscher Benutzername oder falsches Kennwort für den Speicher der FRITZ!Box</translation>
    </message>
    <message>
        <source>No connection to the router&apos;s storage (home network)</source>
        <translation>Keine Verbindung zum Speicher der FRITZ!Box (Heimnetz)</translation>
    </message>
    <message>
        <source>No connection to the router&apos;s storage (remote access)</source>
        <translation>Keine Verbindung zum Speicher der FRITZ!Box (Fernzugang)</translation>
    </message>
    <message>
        <source>The secure connection to the router&apos;s storage timed out</source>
        <translation>Zeitüberschreitung beim Aufbau der sicheren Verbindung zum Speicher der FRITZ!Box</translation>
    </message>
    <message>
        <source>This router user has no right to change the router&apos;s settings. %1 needs a user with that right.</source>
        <extracomment>%1: application name</extracomment>
        <translation>Dieser FRITZ!Box-Benutzer hat keine Berechtigung für die FRITZ!Box-Einstellungen. %1 benötigt einen Benutzer mit dieser Berechtigung.</translation>
    </message>
    <message>
        <source>The settings could not be read from the router. Check the address, user name and password.</source>
        <translation>Die Einstellungen konnten nicht aus der FRITZ!Box gelesen werden. Bitte prüfen Sie Adresse, Benutzername und Kennwort.</translation>
    </message>
    <message>
        <source>The settings could not be saved.</source>
        <translation>Die Einstellungen konnten nicht gespeichert werden.</translation>
    </message>
    <message>
        <source>MyFRITZ! password</source>
        <translation>MyFRITZ!-Kennwort</translation>
    </message>
    <message>
        <source>Remote access password</source>
        <translation>Kennwort für den Fernzugang</translation>
    </message>
    <message>
        <source>Save settings</source>
        <translation>Einstellungen speichern</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Zurück</translation>
    </message>
    <message>
        <source>Next</source>
        <translation>Weiter</translation>
    </message>
    <message>
        <source>Choose your router from the list of routers found on the network, or enter its host name or address.</source>
        <translation>Wählen Sie Ihre FRITZ!Box aus der Liste der im Netzwerk gefundenen Geräte, oder geben Sie ihren Hostnamen oder ihre Adresse ein.</translation>
    </message>
    <message>
        <source>Enter the user name and password you log in to the router with. Leave the user name empty if the router asks only for a password.</source>
        <translation>Geben Sie den Benutzernamen und das Kennwort ein, mit denen Sie sich an der FRITZ!Box anmelden. Lassen Sie den Benutzernamen leer, wenn die FRITZ!Box nur ein Kennwort verlangt.</translation>
    </message>
    <message>
        <source>The dialling settings and remote access data are read from the router. Check them before you go on.</source>
        <translation>Die Wähleinstellungen und die Daten für den Fernzugang werden aus der FRITZ!Box gelesen. Bitte prüfen Sie sie, bevor Sie fortfahren.</translation>
    </message>
    <message>
        <source>To reach the router from outside your home network, enter its internet address and the password for remote access.</source>
        <translation>Damit Sie die FRITZ!Box auch von unterwegs erreichen, geben Sie ihre Internetadresse und das Kennwort für den Fernzugang ein.</translation>
    </message>
    <message>
        <source>Your router is registered with MyFRITZ! and can be reached through it from outside. Enter the password for remote access.</source>
        <translation>Ihre FRITZ!Box ist bei MyFRITZ! registriert und darüber von unterwegs erreichbar. Geben Sie das Kennwort für den Fernzugang ein.</translation>
    </message>
    <message>
        <source>Everything is ready. Save the settings to add the router as a new location.</source>
        <translation>Alles ist bereit. Speichern Sie die Einstellungen, um die FRITZ!Box als neuen Standort hinzuzufügen.</translation>
    </message>
</context>
</TS>
