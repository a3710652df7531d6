# SPDX-License-Identifier: GPL-3.0-only
"""Runs broken programs so that they harm little: they can't write the sources, have no rights over the system, and what they start
ends with them. Root gives them to a user who owns nothing; for anybody else they keep what he may do outside of the sources."""
import os
import shutil
import signal
import subprocess
import time

NOBODY = 65534
MEMORY = 6 << 30
FILE_SIZE = 3 << 30

# $1 sources, $2 private folder. The private folder is mounted upon itself first, so that it stays writable.
MOUNT = """
mount --bind "$2" "$2" && mount --bind "$1" "$1" && mount --bind "$2" "$2" &&
mount -o remount,bind,ro "$1" && cd "$2" || exit 120
"""


class Confinement:
    def __init__(self, sources):
        self.sources = sources
        self.is_root = os.geteuid() == 0
        namespaces = ["--mount", "--pid", "--fork", "--kill-child", "--mount-proc"]
        self.unshare = ["unshare", *([] if self.is_root else ["--user", "--map-root-user"]), *namespaces, "--"]
        if subprocess.run([*self.unshare, "true"], capture_output=True).returncode != 0:
            raise SystemExit("What is broken can't be confined here: unshare makes no namespaces of its own.")

    def run(self, command, folder, environment, seconds):
        """(exit status, or None when the time was over; seconds it took; the end of what it printed)

        `folder` is what can be written of the sources, with HOME and TMPDIR in it. It is empty at first, and stays as it was left."""
        shutil.rmtree(folder, ignore_errors=True)
        for name in ("", "home", "tmp"):
            os.makedirs(os.path.join(folder, name))
        if self.is_root:
            for name in ("", "home", "tmp"):
                os.chown(os.path.join(folder, name), NOBODY, NOBODY)
        nobody = [f"--reuid={NOBODY}", f"--regid={NOBODY}", "--clear-groups"] if self.is_root else []
        rights = ["setpriv", "--no-new-privs", "--bounding-set=-all", "--inh-caps=-all", *nobody]
        limits = ["prlimit", f"--data={MEMORY}", f"--fsize={FILE_SIZE}", "--core=0", "--"]
        shell = ["sh", "-c", MOUNT + 'shift 2; exec "$@"', "sh", self.sources, folder]
        environment = {
            "PATH": os.environ["PATH"], "HOME": f"{folder}/home", "TMPDIR": f"{folder}/tmp", "LC_ALL": "C.UTF-8", **environment
        }
        start = time.monotonic()
        with open(os.path.join(folder, "output"), "w+b") as output:
            process = subprocess.Popen([*self.unshare, *shell, *rights, *limits, *command], stdin=subprocess.DEVNULL,
                                       stdout=output, stderr=subprocess.STDOUT, env=environment, start_new_session=True)
            try:
                status = process.wait(seconds)
            except subprocess.TimeoutExpired:
                status = None
            finally:
                if process.poll() is None:
                    os.killpg(process.pid, signal.SIGKILL)  # and --kill-child takes the rest along
                    process.wait()
            output.seek(max(0, output.seek(0, os.SEEK_END) - 4000))
            printed = output.read().decode(errors="replace")
        return status, time.monotonic() - start, printed
