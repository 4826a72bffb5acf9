"""A Slurm cluster of one node on this machine, for as long as a with-block lasts.

The daemons are Debian's own (munged, slurmctld, slurmd), run in the foreground as children of this process with a
folder, sockets and ports of their own, without systemd and cgroups. They die with this process, whatever ends it.
"""

import contextlib
import ctypes
import os
import shutil
import signal
import socket
import subprocess
import sys
import tempfile
import time
from pathlib import Path

NEEDED = ("munged", "slurmctld", "slurmd", "sbatch", "squeue", "scontrol", "scancel")
FOLDERS = "/usr/sbin:/usr/bin:/sbin:/bin"


def missing():
    """Why no cluster can be started here; "" if one can."""
    absent = [name for name in NEEDED if not shutil.which(name, path=FOLDERS)]
    if absent:
        return f"{', '.join(absent)}: not installed (scripts/setup.sh tests)"
    if not has_control_groups():
        return "no control groups are mounted, which slurmd asks for"
    return "" if os.geteuid() == 0 else "the daemons of a cluster want to be started by root"


def has_control_groups():
    mounts = Path("/proc/self/mountinfo").read_text().splitlines()
    return any(line.partition(" - ")[2].startswith("cgroup") for line in mounts)


def free_ports(count):
    taken = [socket.socket() for _ in range(count)]
    for each in taken:
        each.bind(("127.0.0.1", 0))
    ports = [each.getsockname()[1] for each in taken]
    for each in taken:
        each.close()
    return ports


PR_SET_PDEATHSIG, PR_SET_CHILD_SUBREAPER = 1, 36
LIBC = ctypes.CDLL("libc.so.6")


def die_with_parent():
    LIBC.prctl(PR_SET_PDEATHSIG, signal.SIGKILL)


def end_in_order(*_):
    sys.exit("stopped")


def end_adopted():
    """Ends the helpers of jobs, which a cluster's daemons leave to us."""
    for status in Path("/proc").glob("[0-9]*/stat"):
        with contextlib.suppress(OSError):
            name, fields = status.read_text().split("(", 1)[1].rsplit(")", 1)
            if int(fields.split()[1]) == os.getpid() and name == "slurmstepd":
                os.kill(int(status.parent.name), signal.SIGKILL)
                os.waitpid(int(status.parent.name), 0)


class Cluster:
    LONGEST = 100  # seconds; then all is torn down, whatever hangs

    def __enter__(self):
        LIBC.prctl(PR_SET_CHILD_SUBREAPER, 1)
        signal.signal(signal.SIGTERM, end_in_order)
        signal.signal(signal.SIGALRM, end_in_order)
        signal.alarm(self.LONGEST)
        self.base = Path(tempfile.mkdtemp(prefix="quillon-slurm-"))
        self.daemons = []
        self.env = {"PATH": FOLDERS, "SLURM_CONF": str(self.base / "slurm.conf"), "HOME": str(self.base)}
        try:
            self.start()
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        if any(daemon.poll() is None for daemon in self.daemons):
            subprocess.run(["scancel", "--user=root", "--quiet"], env=self.env, check=False, timeout=20,
                           stderr=subprocess.DEVNULL)
        for daemon in reversed(self.daemons):
            daemon.terminate()
            try:
                daemon.wait(10)
            except subprocess.TimeoutExpired:
                daemon.kill()
                daemon.wait()
        end_adopted()
        signal.alarm(0)
        shutil.rmtree(self.base, ignore_errors=True)

    def start(self):
        for folder in ("munge", "state", "spool"):
            (self.base / folder).mkdir(mode=0o700)
        munge = self.base / "munge"
        (munge / "key").write_bytes(os.urandom(128))
        (munge / "key").chmod(0o400)
        self.configure(munge / "socket", *free_ports(2))
        self.run("munged", "--foreground", "--force", f"--socket={munge}/socket", f"--key-file={munge}/key",
                 f"--seed-file={munge}/seed", f"--pid-file={munge}/pid", f"--log-file={munge}/log")
        self.wait(lambda: (munge / "socket").exists(), "munged")
        self.run("slurmctld", "-D", "-c")
        self.run("slurmd", "-D")
        self.wait(lambda: "idle" in self.ask("sinfo", "--noheader", "--format=%T"), "the node")

    def configure(self, munge_socket, port, node_port):
        host = socket.gethostname().split(".")[0]
        (self.base / "slurm.conf").write_text(f"""ClusterName=quillon
SlurmctldHost={host}(127.0.0.1)
SlurmctldPort={port}
SlurmdPort={node_port}
SlurmUser=root
AuthType=auth/munge
AuthInfo=socket={munge_socket}
StateSaveLocation={self.base}/state
SlurmdSpoolDir={self.base}/spool
SlurmctldPidFile={self.base}/slurmctld.pid
SlurmdPidFile={self.base}/slurmd.pid
SlurmctldLogFile={self.base}/slurmctld.log
SlurmdLogFile={self.base}/slurmd.log
ProctrackType=proctrack/linuxproc
TaskPlugin=task/none
JobAcctGatherType=jobacct_gather/none
MpiDefault=none
SelectType=select/cons_tres
SelectTypeParameters=CR_CPU
SchedulerParameters=sched_min_interval=1000,batch_sched_delay=0
ReturnToService=2
NodeName={host} NodeAddr=127.0.0.1 CPUs=2 RealMemory=256
PartitionName=main Nodes=ALL Default=YES State=UP
""")

    def run(self, name, *arguments):
        with open(self.base / f"{name}.out", "wb") as out:
            self.daemons.append(subprocess.Popen(
                [shutil.which(name, path=FOLDERS), *arguments], env=self.env, stdin=subprocess.DEVNULL, stdout=out,
                stderr=subprocess.STDOUT, preexec_fn=die_with_parent, start_new_session=True))

    def wait(self, ready, what, seconds=30):
        end = time.monotonic() + seconds
        while not ready():
            dead = [daemon.args[0] for daemon in self.daemons if daemon.poll() is not None]
            if dead or time.monotonic() > end:
                logs = "".join(f"\n{log.name}: {log.read_text(errors='replace')[-1500:]}" for log in
                               [*self.base.glob("*.out"), *self.base.glob("*.log"), *self.base.glob("munge/log")])
                raise RuntimeError(f"{what} isn't ready; ended: {dead}{logs}")
            time.sleep(0.1)

    def ask(self, *command, **env):
        """Standard output of one of Slurm's commands."""
        done = subprocess.run(command, env={**self.env, **env}, cwd=self.base, capture_output=True, text=True,
                              timeout=60, check=False)
        if done.returncode != 0 and command[0] != "sinfo":
            raise RuntimeError(f"{command}: {done.stderr}")
        return done.stdout
