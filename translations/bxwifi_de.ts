<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>BxWifi::Attempt</name>
    <message>
        <source>nothing is stored for this network to join it with</source>
        <translation>für dieses Netzwerk ist nichts gespeichert, womit es sich verbinden ließe</translation>
    </message>
    <message>
        <source>wrong passphrase or key</source>
        <translation>falsches WLAN-Passwort oder falscher Schlüssel</translation>
    </message>
    <message>
        <source>the supplicant has ended</source>
        <translation>der Supplicant hat sich beendet</translation>
    </message>
    <message>
        <source>identity or password refused</source>
        <translation>Benutzername oder Passwort abgelehnt</translation>
    </message>
    <message>
        <source>refused; most likely a wrong passphrase</source>
        <translation>abgelehnt; höchstwahrscheinlich ein falsches WLAN-Passwort</translation>
    </message>
    <message>
        <source>the supplicant gave the network up for now</source>
        <translation>der Supplicant hat das Netzwerk vorerst aufgegeben</translation>
    </message>
    <message>
        <source>joined, but no address came; a wrong WEP key looks like that</source>
        <translation>verbunden, aber ohne Adresse; ein falscher WEP-Schlüssel zeigt sich so</translation>
    </message>
    <message>
        <source>joined, but no address came</source>
        <translation>verbunden, aber ohne Adresse</translation>
    </message>
</context>
<context>
    <name>BxWifi::DaemonLink</name>
    <message>
        <source>the daemon has no supplicant to talk to</source>
        <translation>der Dienst hat keine Verbindung zum Supplicant</translation>
    </message>
    <message>
        <source>removed, but back each time: the supplicant cannot save its configuration; look whether the file system under /prefs is full or read-only</source>
        <translation>entfernt, aber jedes Mal wieder da: der Supplicant kann seine Konfiguration nicht sichern; ist das Dateisystem unter /prefs voll oder schreibgeschützt?</translation>
    </message>
    <message>
        <source>cannot reach the system bus</source>
        <translation>der Systembus ist nicht erreichbar</translation>
    </message>
    <message>
        <source>the daemon bxwifid is not running</source>
        <translation>der Dienst bxwifid läuft nicht</translation>
    </message>
    <message>
        <source>this user may not call the daemon bxwifid</source>
        <translation>dieser Benutzer darf den Dienst bxwifid nicht aufrufen</translation>
    </message>
    <message>
        <source>the daemon bxwifid did not answer in time</source>
        <translation>der Dienst bxwifid hat nicht rechtzeitig geantwortet</translation>
    </message>
    <message>
        <source>the daemon bxwifid went away</source>
        <translation>der Dienst bxwifid hat sich beendet</translation>
    </message>
</context>
<context>
    <name>BxWifi::Join</name>
    <message>
        <source>another network was asked for meanwhile</source>
        <translation>inzwischen wurde ein anderes Netzwerk verlangt</translation>
    </message>
    <message>
        <source>no such network in sight</source>
        <translation>kein solches Netzwerk in Sicht</translation>
    </message>
    <message>
        <source>several kinds of protection under this name; say which</source>
        <translation>unter diesem Namen gibt es mehrere Arten von Schutz; welche ist gemeint?</translation>
    </message>
    <message>
        <source>given up</source>
        <translation>abgebrochen</translation>
    </message>
    <message>
        <source>its former key is lost</source>
        <extracomment>why there is no way back to the former network, behind an error</extracomment>
        <translation>der frühere Schlüssel ist verloren</translation>
    </message>
    <message>
        <source>%1 takes its secret each time</source>
        <translation>%1 verlangt die Zugangsdaten jedes Mal neu</translation>
    </message>
    <message>
        <source>back in %1</source>
        <extracomment>what became of the device, behind an error; %1 is the former network</extracomment>
        <translation>zurück in %1</translation>
    </message>
    <message>
        <source>the device is in no network now</source>
        <translation>das Gerät ist jetzt in keinem Netzwerk</translation>
    </message>
    <message>
        <source>not joined within %1 s</source>
        <translation>nicht verbunden innerhalb von %1 s</translation>
    </message>
    <message>
        <source>; the passphrase may be wrong, or the supplicant&apos;s configuration file may lack the line pmf=1, which WPA3 needs</source>
        <translation>; vielleicht ist das WLAN-Passwort falsch, oder der Konfigurationsdatei des Supplicant fehlt die Zeile pmf=1, die WPA3 braucht</translation>
    </message>
</context>
<context>
    <name>BxWifi::JoinSettings</name>
    <message>
        <source>the name of the network is empty</source>
        <translation>der Name des Netzwerks ist leer</translation>
    </message>
    <message>
        <source>the name of a network has at most %1 bytes</source>
        <translation>der Name eines Netzwerks hat höchstens %1 Byte</translation>
    </message>
    <message>
        <source>the daemon cannot pass on a name that is not UTF-8 text</source>
        <translation>einen Namen, der kein UTF-8-Text ist, kann der Dienst nicht weitergeben</translation>
    </message>
    <message>
        <source>WPA3 takes a passphrase, not a 64-digit key</source>
        <translation>WPA3 verlangt ein WLAN-Passwort, keinen Schlüssel aus 64 Ziffern</translation>
    </message>
    <message>
        <source>a passphrase has %1 to %2 characters, a key 64 hexadecimal digits</source>
        <translation>ein WLAN-Passwort hat %1 bis %2 Zeichen, ein Schlüssel 64 hexadezimale Ziffern</translation>
    </message>
    <message>
        <source>a hidden network does not say how it is protected</source>
        <translation>ein verborgenes Netzwerk sagt nicht, wie es geschützt ist</translation>
    </message>
    <message>
        <source>an open network takes no passphrase</source>
        <translation>ein offenes Netzwerk verlangt kein WLAN-Passwort</translation>
    </message>
    <message>
        <source>a WEP key has 5 or 13 characters</source>
        <translation>ein WEP-Schlüssel hat 5 oder 13 Zeichen</translation>
    </message>
    <message>
        <source>an enterprise network takes an identity and a password</source>
        <translation>ein Unternehmensnetzwerk verlangt Benutzername und Passwort</translation>
    </message>
    <message>
        <source>the network is protected in a way that the daemon cannot join</source>
        <translation>mit dieser Art von Schutz kann sich der Dienst nicht verbinden</translation>
    </message>
    <message>
        <source>a time limit is one second to one day</source>
        <translation>eine Frist reicht von einer Sekunde bis zu einem Tag</translation>
    </message>
    <message>
        <source>control characters in a passphrase, password or identity</source>
        <translation>Steuerzeichen in WLAN-Passwort, Passwort oder Benutzername</translation>
    </message>
    <message>
        <source>the daemon cannot pass on a WEP key that is not text</source>
        <translation>einen WEP-Schlüssel, der kein Text ist, kann der Dienst nicht weitergeben</translation>
    </message>
    <message>
        <source>of the enterprise networks only those with PEAP can be joined</source>
        <translation>von den Unternehmensnetzwerken sind nur die mit PEAP möglich</translation>
    </message>
    <message>
        <source>this is no code of a wireless network: it does not begin with &quot;WIFI:&quot;</source>
        <translation>das ist kein Code eines WLANs: er beginnt nicht mit „WIFI:“</translation>
    </message>
    <message>
        <source>the code is cut off</source>
        <translation>der Code ist abgeschnitten</translation>
    </message>
    <message>
        <source>the code does not name a network</source>
        <translation>der Code nennt kein Netzwerk</translation>
    </message>
    <message>
        <source>the code names a kind of protection that is not known</source>
        <translation>der Code nennt eine unbekannte Art von Schutz</translation>
    </message>
</context>
<context>
    <name>BxWifi::Security</name>
    <message>
        <source>open</source>
        <extracomment>How a network is protected: not at all</extracomment>
        <translation>offen</translation>
    </message>
    <message>
        <source>%1 Enterprise</source>
        <extracomment>How a network is protected; %1 is WPA, WPA2 or both</extracomment>
        <translation>%1 Enterprise</translation>
    </message>
    <message>
        <source>unsupported</source>
        <extracomment>How a network is protected: in a way that the device cannot join</extracomment>
        <translation>nicht unterstützt</translation>
    </message>
</context>
<context>
    <name>BxWifi::WifiClientPrivate</name>
    <message>
        <source>no scan results</source>
        <translation>die Suche hat nichts gebracht</translation>
    </message>
    <message>
        <source>no network is stored by that name</source>
        <translation>unter diesem Namen ist kein Netzwerk gespeichert</translation>
    </message>
    <message>
        <source>the daemon bxwifid went away</source>
        <translation>der Dienst bxwifid hat sich beendet</translation>
    </message>
</context>
<context>
    <name>BxWifi::WifiReply</name>
    <message>
        <source>given up</source>
        <translation>abgebrochen</translation>
    </message>
</context>
<context>
    <name>BxWifi::WiredSettings</name>
    <message>
        <source>%1 is not a dotted-decimal address</source>
        <translation>%1 ist keine Adresse aus vier Zahlen mit Punkten</translation>
    </message>
    <message>
        <source>%1 is not a network mask</source>
        <translation>%1 ist keine Netzmaske</translation>
    </message>
    <message>
        <source>%1 is not the address of a host in its network</source>
        <translation>%1 ist in diesem Netz keine Adresse für ein Gerät</translation>
    </message>
    <message>
        <source>gateway %1 is not a host in the network of %2</source>
        <translation>das Gateway %1 liegt nicht im Netz von %2</translation>
    </message>
</context>
<context>
    <name>ConnectionBar</name>
    <message>
        <source>The network service is not running</source>
        <translation>Der Netzwerkdienst läuft nicht</translation>
    </message>
    <message>
        <source>Connecting …</source>
        <translation>Verbindungsaufbau …</translation>
    </message>
    <message>
        <source>Not connected</source>
        <translation>Nicht verbunden</translation>
    </message>
    <message>
        <source>Scan</source>
        <extracomment>a button: look for networks</extracomment>
        <translation>Suchen</translation>
    </message>
</context>
<context>
    <name>JoinSheet</name>
    <message>
        <source>There are several networks of this name. Choose how yours is protected.</source>
        <translation>Es gibt mehrere Netzwerke dieses Namens. Wie ist das gemeinte geschützt?</translation>
    </message>
    <message>
        <source>This network is not protected: others can read what is sent over it.</source>
        <translation>Dieses Netzwerk ist nicht geschützt: Andere können mitlesen, was darüber gesendet wird.</translation>
    </message>
    <message>
        <source>This device cannot join a network that is protected in this way.</source>
        <translation>Mit dieser Art von Schutz kann sich das Gerät nicht verbinden.</translation>
    </message>
    <message>
        <source>Leave it empty to use what the device has stored.</source>
        <translation>Leer lassen, um zu verwenden, was auf dem Gerät gespeichert ist.</translation>
    </message>
    <message>
        <source>Looking for the network …</source>
        <translation>Netzwerk wird gesucht …</translation>
    </message>
    <message>
        <source>Joining the network …</source>
        <translation>Verbindung wird hergestellt …</translation>
    </message>
    <message>
        <source>Waiting for an address …</source>
        <translation>Warten auf eine Adresse …</translation>
    </message>
    <message>
        <source>Going back to the former network …</source>
        <translation>Zurück zum vorigen Netzwerk …</translation>
    </message>
    <message>
        <source>Asking the network service …</source>
        <translation>Anfrage beim Netzwerkdienst …</translation>
    </message>
    <message>
        <source>Join a network</source>
        <translation>Mit Netzwerk verbinden</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>WPA, WPA2</source>
        <translation>WPA, WPA2</translation>
    </message>
    <message>
        <source>WPA3</source>
        <translation>WPA3</translation>
    </message>
    <message>
        <source>WPA2 Enterprise</source>
        <translation>WPA2 Enterprise</translation>
    </message>
    <message>
        <source>WEP</source>
        <translation>WEP</translation>
    </message>
    <message>
        <source>None</source>
        <extracomment>a network without protection</extracomment>
        <translation>Keiner</translation>
    </message>
    <message>
        <source>Protection</source>
        <translation>Schutz</translation>
    </message>
    <message>
        <source>User name</source>
        <translation>Benutzername</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>Passwort</translation>
    </message>
    <message>
        <source>Passphrase</source>
        <translation>WLAN-Passwort</translation>
    </message>
    <message>
        <source>Show</source>
        <extracomment>a box to tick: whether the passphrase can be read while it is typed</extracomment>
        <translation>Anzeigen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Join</source>
        <extracomment>a button: join this network</extracomment>
        <translation>Verbinden</translation>
    </message>
    <message>
        <source>Hidden network</source>
        <translation>Verborgenes Netzwerk</translation>
    </message>
</context>
<context>
    <name>NetworkList</name>
    <message>
        <source>Networks</source>
        <translation>Netzwerke</translation>
    </message>
    <message>
        <source>No networks in sight</source>
        <translation>Keine Netzwerke in Sicht</translation>
    </message>
</context>
<context>
    <name>NetworkMenu</name>
    <message>
        <source>Disconnect</source>
        <translation>Verbindung trennen</translation>
    </message>
    <message>
        <source>Forget this network</source>
        <translation>Dieses Netzwerk vergessen</translation>
    </message>
</context>
<context>
    <name>NetworkRow</name>
    <message>
        <source>several kinds of protection</source>
        <translation>mehrere Arten von Schutz</translation>
    </message>
    <message>
        <source>Connected</source>
        <translation>Verbunden</translation>
    </message>
    <message>
        <source>%1, known</source>
        <extracomment>below the name of a network: its protection, e.g. &quot;WPA2&quot;; the device has joined it before</extracomment>
        <translation>%1, bekannt</translation>
    </message>
    <message>
        <source>%1, signal %2 of 4</source>
        <extracomment>what a screen reader says of a network: its protection or &quot;Connected&quot;, then its signal</extracomment>
        <translation>%1, Signal %2 von 4</translation>
    </message>
</context>
<context>
    <name>Panel</name>
    <message>
        <source>Network</source>
        <translation>Netzwerk</translation>
    </message>
    <message>
        <source>Wi-Fi</source>
        <translation>WLAN</translation>
    </message>
    <message>
        <source>Wired</source>
        <translation>Kabel</translation>
    </message>
    <message>
        <source>Hidden network …</source>
        <translation>Verborgenes Netzwerk …</translation>
    </message>
</context>
<context>
    <name>WiredForm</name>
    <message>
        <source>Stored; takes effect at the next start of the device.</source>
        <translation>Gespeichert; wirkt ab dem nächsten Start des Geräts.</translation>
    </message>
    <message>
        <source>Address</source>
        <translation>Adresse</translation>
    </message>
    <message>
        <source>Gateway</source>
        <translation>Gateway</translation>
    </message>
    <message>
        <source>Network mask</source>
        <translation>Netzmaske</translation>
    </message>
    <message>
        <source>Store</source>
        <translation>Speichern</translation>
    </message>
    <message>
        <source>Address by DHCP</source>
        <translation>Adresse per DHCP</translation>
    </message>
</context>
<context>
    <name>bxwifictl</name>
    <message>
        <source>no answer in time</source>
        <translation>keine rechtzeitige Antwort</translation>
    </message>
    <message>
        <source>scanning</source>
        <extracomment>progress, like those that follow: &quot; ...&quot; comes behind it</extracomment>
        <translation>Suche</translation>
    </message>
    <message>
        <source>asking the daemon</source>
        <translation>Anfrage beim Dienst</translation>
    </message>
    <message>
        <source>associating</source>
        <translation>Verbindungsaufbau</translation>
    </message>
    <message>
        <source>waiting for an address</source>
        <translation>Warten auf eine Adresse</translation>
    </message>
    <message>
        <source>going back to %1</source>
        <translation>zurück zu %1</translation>
    </message>
    <message>
        <source>should this fail, the device cannot go back to %1, whose passphrase or login has to be given every time</source>
        <translation>misslingt dies, kann das Gerät nicht zurück zu %1: WLAN-Passwort oder Anmeldung sind dort jedes Mal neu anzugeben</translation>
    </message>
    <message>
        <source>%1: no such network in sight; a hidden one needs --hidden</source>
        <translation>%1: kein solches Netzwerk in Sicht; ein verborgenes braucht --hidden</translation>
    </message>
    <message>
        <source>--stored and --password-file exclude each other</source>
        <translation>--stored und --password-file schließen einander aus</translation>
    </message>
    <message>
        <source>--stored is for WPA, WPA2 and WEP; others are joined anew each time</source>
        <translation>--stored ist für WPA, WPA2 und WEP; andere verlangen ihre Zugangsdaten jedes Mal neu</translation>
    </message>
    <message>
        <source>an open network takes no --password-file</source>
        <translation>zu einem offenen Netzwerk gehört kein --password-file</translation>
    </message>
    <message>
        <source>--identity is for enterprise networks</source>
        <translation>--identity ist für Unternehmensnetzwerke</translation>
    </message>
    <message>
        <source>%1 needs --identity</source>
        <translation>%1 braucht --identity</translation>
    </message>
    <message>
        <source>Identity for %1: </source>
        <translation>Benutzername für %1: </translation>
    </message>
    <message>
        <source>Passphrase for %1 (empty: the stored one): </source>
        <translation>WLAN-Passwort für %1 (leer: das gespeicherte): </translation>
    </message>
    <message>
        <source>Passphrase for %1: </source>
        <translation>WLAN-Passwort für %1: </translation>
    </message>
    <message>
        <source>--password-file, or --stored</source>
        <translation>--password-file oder --stored</translation>
    </message>
    <message>
        <source>%1 needs a passphrase: give %2</source>
        <extracomment>%1 is the network, %2 one option or two</extracomment>
        <translation>%1 braucht ein WLAN-Passwort: %2 angeben</translation>
    </message>
    <message>
        <source>--uri-file takes only --timeout and --json beside it</source>
        <translation>neben --uri-file sind nur --timeout und --json möglich</translation>
    </message>
    <message>
        <source>no verb &apos;%1&apos;; see bxwifictl --help</source>
        <translation>das Verb „%1“ gibt es nicht; siehe bxwifictl --help</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not UTF-8 text</source>
        <translation>„%1“ ist kein UTF-8-Text</translation>
    </message>
    <message>
        <source>--security is open, wpa, wpa3, wep or peap</source>
        <translation>--security ist open, wpa, wpa3, wep oder peap</translation>
    </message>
    <message>
        <source>--timeout takes whole seconds</source>
        <translation>--timeout nimmt ganze Sekunden</translation>
    </message>
    <message>
        <source>%1 takes no option --%2</source>
        <extracomment>%1 is a verb of the command line</extracomment>
        <translation>%1 kennt die Option --%2 nicht</translation>
    </message>
    <message>
        <source>%1 is not UTF-8 text</source>
        <extracomment>%1 is &quot;the first line of FILE&quot; or &quot;what was typed&quot;</extracomment>
        <translation>%1 ist kein UTF-8-Text</translation>
    </message>
    <message>
        <source>cannot read %1</source>
        <translation>%1 ist nicht lesbar</translation>
    </message>
    <message>
        <source>the first line of %1</source>
        <translation>die erste Zeile von %1</translation>
    </message>
    <message>
        <source>%1 is empty</source>
        <extracomment>%1 is &quot;the first line of FILE&quot;</extracomment>
        <translation>%1 ist leer</translation>
    </message>
    <message>
        <source>no answer</source>
        <translation>keine Antwort</translation>
    </message>
    <message>
        <source>what was typed</source>
        <translation>die Eingabe</translation>
    </message>
    <message>
        <source>Stored; takes effect at the next boot.</source>
        <translation>Gespeichert; wirkt ab dem nächsten Start.</translation>
    </message>
    <message>
        <source>wired takes nothing, &apos;live&apos;, &apos;static ADDRESS GATEWAY NETMASK&apos; or &apos;dhcp on|off&apos;</source>
        <extracomment>&quot;wired&quot; and what is in quotation marks is typed like that in every language</extracomment>
        <translation>auf wired folgt nichts, „live“, „static ADDRESS GATEWAY NETMASK“ oder „dhcp on|off“</translation>
    </message>
    <message>
        <source>the daemon has no supplicant to talk to</source>
        <translation>der Dienst hat keine Verbindung zum Supplicant</translation>
    </message>
    <message>
        <source>cannot write to standard output</source>
        <translation>Schreiben auf die Standardausgabe nicht möglich</translation>
    </message>
</context>
</TS>
