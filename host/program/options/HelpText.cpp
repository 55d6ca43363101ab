// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/program/options/CommandLine.h"

namespace norvo {

QString CommandLine::helpText()
{
    return QStringLiteral(
        R"(Runs an operator panel from a text file.

norvo-panel [options] PANEL.yaml                 runs the panel
norvo-panel --edit PANEL.yaml                    runs the panel and edits it; a file that is not there
                                                 is made when it is saved
norvo-panel --check PANEL.yaml...                reports every error of each panel, no window
norvo-panel --set DEVICE.PARAM=VALUE PANEL.yaml  writes a parameter's value into the panel file;
                                                 can be given several times, all or none are done
norvo-panel --screenshot OUT.png PANEL.yaml      runs the panel unseen and leaves a picture of it;
                                                 the ending chooses its kind: png, jpg, ...
norvo-panel --types                              names every device type, in a line each
norvo-panel --describe TYPE                      what the type is for, its parameters, outputs
                                                 and inputs, and a panel that runs
norvo-panel --describe-all                       the same of all types; --format text, markdown
                                                 or json says how
norvo-panel --schema                             a JSON Schema of panel files, for editors that
                                                 complete and check them
norvo-panel --export OUT.csv PANEL.yaml          writes what the panel's history holds as a table;
                                                 --from TIME and --to TIME say of when
norvo-panel --make-pin                           asks for a PIN and prints the hash that stands for
                                                 it in a panel file

PANEL.yaml can be -, for standard input; its state is kept only where --state names a file. Names of
files in a panel file are relative to its folder.

  --plugins DIR      looks for device plug-ins in DIR, too; can be given several times
  --state FILE       keeps what devices store in FILE, not in PANEL.state.yaml beside the panel
  --no-state         keeps nothing from one run to the next
  --no-reload        takes no change of the panel's files over while it runs
  --audit FILE       records what is done at the panel in FILE, a JSON line each, not in the file
                     that the panel file names
  --serve [ADDRESS:]PORT
                     shows the panel to browsers, to be looked at only; to those of this machine
                     unless an ADDRESS is given, 0.0.0.0 for all
  --serve-token FILE the first line of FILE is what viewers must know; needed with an ADDRESS that
                     others reach
  --serve-cert FILE  a certificate in PEM form, and with --serve-key FILE its key, for https
  --serve-viewers N  how many may look at the same time (4)
  --fullscreen       covers the whole screen; F11 changes to and fro, Escape leaves it
  --kiosk            covers the whole screen to the end, without a pointer: no key, menu or closing
                     leaves it, SIGTERM does
  --theme THEME      light, dark or system, whatever the panel file says
  --after MS         takes the picture after so many milliseconds (500)
  --from TIME        exports no values before; TIME is 2026-03-01T12:00 in local time, the same with
                     a zone, or how long ago, as "1 h"
  --to TIME          exports no values after
  --size WxH         the picture's size in pixels; else what the panel needs
  --verbose          writes debug messages, too
  -h, --help         shows this text
  -v, --version      shows the version

Qt's options -platform, -display, -geometry, -style, -stylesheet and -reverse work as usual.

Errors go to standard error, those that --check finds to standard output. A warning that comes again
and again is written once and then counted. SIGINT, SIGTERM and SIGHUP stop the panel as closing its
window does; a second SIGINT or SIGTERM ends it at once. A display is needed to run a panel and for
nothing else.

Exit status: 0, 1 if the panel has errors or cannot do what was asked for, 2 for a wrong command line.)");
}

} // namespace norvo
