#!/bin/bash
# with-print-server.sh COMMAND [ARGUMENT...]
# Runs the command beside a print server of its own, whose queues write what arrives into a folder, and ends with the command's
# status; with 77 if one of the programs that this needs is not installed.
#
# The command finds the server through CUPS_SERVER, and in NORVANE_PRINT_FOLDER
#   out/ID.pdf, out/ID.arguments  the document of job ID as it arrived, and what the queue was told of it
#   server.pid                    the server's process, to stop it or to make it hang
#   refuse                        made by a test: as long as it is there, every job fails in the backend, after as many seconds
#                                 as it says
# Queues: Colour (default), Grey, Repeating (a page id and a resolution twice, pages without a name of the toolkit's) and Raw
# (no driver, so that every list is empty).
set -u

PATH=$PATH:/usr/sbin
for program in cupsd lpadmin lpstat pdfinfo pdftoppm; do
    if ! command -v "$program" >/dev/null; then
        echo "skipped: $program is not installed"
        exit 77
    fi
done
drivers=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")" && pwd)/ppd

folder=$(mktemp -d)
server=
finish()
{
    if [ -n "$server" ]; then
        # a test may have left it stopped
        kill -CONT "$server" 2>/dev/null
        kill "$server" 2>/dev/null
        wait "$server" 2>/dev/null
    fi
    rm -rf "$folder"
}
trap finish EXIT
trap 'exit 143' TERM
trap 'exit 130' INT

mkdir -p "$folder"/{root/ppd,cache,run/certs,spool/tmp,log,bin/backend,out}
ln -s /usr/lib/cups/daemon "$folder/bin/daemon"

user=$(id -un) group=$(id -gn) system_group=$(id -gn)
if [ "$(id -u)" -eq 0 ]; then
    # the server runs its helpers as nobody special, who must reach the folder; what they run must stay root's
    user=lp group=lp system_group=root
    chown -R lp:lp "$folder"/{cache,run,spool,out}
    chmod 755 "$folder"
fi

cat >"$folder/root/cups-files.conf" <<END
ServerRoot $folder/root
ServerBin $folder/bin
DataDir /usr/share/cups
CacheDir $folder/cache
StateDir $folder/run
RequestRoot $folder/spool
TempDir $folder/spool/tmp
AccessLog $folder/log/access
ErrorLog $folder/log/error
PageLog $folder/log/page
User $user
Group $group
SystemGroup $system_group
END

cat >"$folder/root/cupsd.conf" <<END
LogLevel warn
Listen $folder/socket
Browsing No
WebInterface No
DefaultAuthType None
DirtyCleanInterval 0
PreserveJobFiles No
<Location />
  Allow all
</Location>
<Policy default>
  <Limit All>
    Allow all
  </Limit>
</Policy>
END

# A queue's device: without arguments it names itself, else it takes JOB USER TITLE COPIES OPTIONS [FILE]. A document appears
# under its name only when it is whole.
cat >"$folder/bin/backend/tofile" <<END
#!/bin/sh
[ \$# -gt 0 ] || { echo 'direct tofile "Unknown" "file sink"'; exit 0; }
[ ! -e "$folder/refuse" ] || { sleep "0\$(cat "$folder/refuse")"; exit 1; }
printf '%s\n' "\$@" >"$folder/out/\$1.arguments"
cat "\${6:--}" >"$folder/out/\$1.part" && mv "$folder/out/\$1.part" "$folder/out/\$1.pdf"
END
chmod 755 "$folder/bin/backend/tofile"

cupsd -f -c "$folder/root/cupsd.conf" -s "$folder/root/cups-files.conf" &
server=$!
echo "$server" >"$folder/server.pid"

export CUPS_SERVER=$folder/socket NORVANE_PRINT_FOLDER=$folder
# What a person has chosen for other programs is none of the command's business.
unset CUPS_USER CUPS_ENCRYPTION PRINTER LPDEST

for ((tries = 0; tries < 200; tries++)); do
    lpstat -r 2>/dev/null | grep -q 'is running' && break
    sleep 0.05
done
if ! lpstat -r 2>/dev/null | grep -q 'is running'; then
    echo "cupsd does not start:"
    cat "$folder/log/error"
    exit 1
fi

# Old-fashioned drivers are a warning to the server, but just what it is to offer here.
{
    lpadmin -p Colour -E -v tofile:/colour -P "$drivers/colour.ppd" &&
        lpadmin -p Grey -E -v tofile:/grey -P "$drivers/grey.ppd" &&
        lpadmin -p Repeating -E -v tofile:/repeating -P "$drivers/repeating.ppd" &&
        lpadmin -p Raw -E -v tofile:/raw -m raw &&
        lpadmin -d Colour
} >"$folder/log/queues" 2>&1
status=$?
if [ "$status" -ne 0 ]; then
    echo "a queue can't be made:"
    cat "$folder/log/queues" "$folder/log/error"
    exit 1
fi

"$@"
