#!/usr/bin/env python3
"""The Kubernetes example, as far as it can be tried without a cluster: the fields that a cluster would refuse or that
would lose reports if they were wrong, and the pods' command run as each pod would run it."""

import subprocess
import unittest

import fleet

try:
    import yaml
except ImportError:
    fleet.skip_loudly("python3-yaml is not installed (scripts/setup.sh tests)")

# Field, kind, whether it must stand there; a list in a list of one: each of its items.
TEXT, NUMBER, TRUTH = str, int, bool
CONTAINER = {"name": TEXT, "image": TEXT, "command": [TEXT], "env": [{"name": TEXT, "value": TEXT}],
             "resources": {"requests": {"cpu": TEXT, "memory": TEXT}, "limits": {"memory": TEXT}},
             "securityContext": {"allowPrivilegeEscalation": TRUTH, "readOnlyRootFilesystem": TRUTH},
             "volumeMounts": [{"name": TEXT, "mountPath": TEXT, "readOnly": (TRUTH,)}]}
JOB = {"apiVersion": TEXT, "kind": TEXT, "metadata": {"name": TEXT}, "spec": {
    "completionMode": TEXT, "completions": NUMBER, "parallelism": NUMBER, "backoffLimit": NUMBER,
    "podFailurePolicy": {"rules": [{
        "action": TEXT, "onExitCodes": ({"operator": TEXT, "values": [NUMBER]},),
        "onPodConditions": ([{"type": TEXT, "status": TEXT}],)}]},
    "template": {"spec": {
        "restartPolicy": TEXT, "terminationGracePeriodSeconds": NUMBER,
        "securityContext": {"runAsNonRoot": TRUTH, "runAsUser": NUMBER, "fsGroup": NUMBER}, "containers": [CONTAINER],
        "volumes": [{"name": TEXT, "persistentVolumeClaim": ({"claimName": TEXT, "readOnly": (TRUTH,)},),
                     "configMap": ({"name": TEXT},), "emptyDir": (dict,)}]}}}}


def faults(value, shape, at="job"):
    """Where the value differs from the shape; a tuple stands for a field that may be absent."""
    if isinstance(shape, list):
        items = value if isinstance(value, list) and value else None
        return [f"{at}: no list"] if items is None else [f for i, x in enumerate(items) for f in faults(x, shape[0], f"{at}[{i}]")]
    if isinstance(shape, type):
        return [] if type(value) is shape else [f"{at}: {value!r} is no {shape.__name__}"]
    if not isinstance(value, dict):
        return [f"{at}: no fields"]
    found = [f"{at}: {name} is unknown" for name in value if name not in shape]
    for name, kind in shape.items():
        if name in value:
            found += faults(value[name], kind[0] if isinstance(kind, tuple) else kind, f"{at}.{name}")
        elif not isinstance(kind, tuple):
            found.append(f"{at}: {name} is missing")
    return found


class KubernetesTest(fleet.FleetTest):
    def setUp(self):
        super().setUp()
        documents = list(yaml.safe_load_all((fleet.ROOT / "packaging/examples/kubernetes-job.yaml").read_text()))
        self.assertEqual(len(documents), 1)
        self.job = documents[0]
        self.pod = self.job["spec"]["template"]["spec"]
        self.container = self.pod["containers"][0]
        self.env = {item["name"]: item["value"] for item in self.container["env"]}

    def test_fields_are_those_of_an_indexed_job(self):
        self.assertEqual(faults(self.job, JOB), [])
        spec = self.job["spec"]
        self.assertEqual((self.job["apiVersion"], self.job["kind"], spec["completionMode"]), ("batch/v1", "Job", "Indexed"))
        self.assertEqual(self.pod["restartPolicy"], "Never", "a policy for failed pods wants it")
        self.assertEqual(int(self.env["SHARDS"]), spec["completions"], "else reports are left out")
        self.assertLessEqual(spec["parallelism"], spec["completions"])

    def test_each_path_lies_in_a_volume_that_is_there(self):
        volumes = {volume["name"] for volume in self.pod["volumes"]}
        mounts = {mount["mountPath"]: mount for mount in self.container["volumeMounts"]}
        self.assertEqual({mount["name"] for mount in mounts.values()}, volumes)
        self.assertEqual([volume for volume in self.pod["volumes"] if len(volume) != 2], [], "one source each")
        for name in ("INPUTS", "OUTPUTS", "RECIPE", "LISTS"):
            mount = mounts["/" + self.env[name].split("/")[1]]
            self.assertTrue(name in ("INPUTS", "RECIPE") or not mount.get("readOnly"), f"{name} is written to")
        self.assertIn("/tmp", mounts, "work files, as the root is read-only")

    def test_the_command_of_all_pods_is_one_run(self):
        one = self.one_run()
        (self.work / "lists").mkdir()
        places = {"SHARDS": "4", "INPUTS": "in/*.txt", "OUTPUTS": "out/*.csv", "RECIPE": "r.rcp", "LISTS": "lists"}
        self.assertEqual(places.keys(), self.env.keys())
        for index in range(4):
            env = {**self.world.env, **places, "JOB_COMPLETION_INDEX": str(index)}
            done = subprocess.run(self.container["command"], cwd=self.work, env=env, capture_output=True, timeout=60, check=False)
            self.assertEqual(done.returncode, 0, done.stderr)
        self.assert_same_as(one, "out", *(self.work / "lists").glob("*.jsonl"))
        wrong = subprocess.run(self.container["command"], cwd=self.work, capture_output=True, timeout=60, check=False,
                               env={**self.world.env, **places, "SHARDS": "0", "JOB_COMPLETION_INDEX": "0"})
        self.assertEqual(wrong.returncode, 2, "told to the policy")


if __name__ == "__main__":
    unittest.main()
