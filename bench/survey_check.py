#!/usr/bin/env python3
"""Checks `kelvara-cli survey` against statsmodels: survey_check.py KELVARA_CLI FILE...

Each file is checked for itself. The pairs, their variances and the test values are computed here
once more from the cells that `replay --json` lists; the adjustment itself is done by statsmodels:
WLS with the final weights, which must agree to 1e-6 (1e-3 where there are outliers), and RLM with
Huber's weights and a fixed scale, which iterates by its own rule and must agree to 1e-3. Needs
python3-statsmodels.
"""

import json
import subprocess
import sys

import numpy as np
import statsmodels.api as sm

D2 = [1.128, 1.693, 2.059, 2.326, 2.534, 2.704, 2.847, 2.970, 3.078, 3.173, 3.258, 3.336, 3.407,
      3.472, 3.532, 3.588, 3.640, 3.689, 3.735, 3.778, 3.819, 3.858, 3.895, 3.931]


def reading_variance(cells):
    used = [c for c in cells if c["count"] >= 2 and c["max"] - c["min"] <= 8]
    if not used:
        return 0.25
    counts = [min(c["count"], 25) for c in used]
    deviation = sum(c["max"] - c["min"] for c in used) / sum(D2[n - 2] for n in counts)
    freedom = sum(counts) - len(counts)
    return (2.5 + freedom * max(deviation**2, 1 / 12)) / (10 + freedom)


def pairs_of(results):
    """By pair of indices: the measured difference and its variance. Also the path and its scatter."""
    cells = {(c["from"], c["to"]): c for c in results["cells"] if c["min"] > -99}
    noise = reading_variance(cells.values())
    keys = sorted({(min(key), max(key)) for key in cells})
    both = [(a, b) for a, b in keys if (a, b) in cells and (b, a) in cells]

    def mean(key):
        return cells[key]["sum"] / cells[key]["count"]

    def share(*parts):
        return noise * sum(1 / cells[key]["count"] for key in parts)

    paths = {(a, b): -(mean((a, b)) + mean((b, a))) / 2 for a, b in both}
    path, scatter = 0.0, 2.0
    if len(both) >= 3:
        values = np.array(list(paths.values()))
        path = np.median(values)
        deviation = 1.4826 * np.median(np.abs(values - path))
        usual = np.median([share((a, b), (b, a)) / 4 for a, b in both])
        scatter = np.sqrt(max(0.15**2, deviation**2 - usual))
    pairs = {}
    for a, b in keys:
        if (a, b) in paths:
            pairs[a, b] = ((mean((a, b)) - mean((b, a))) / 2, share((a, b), (b, a)) / 4)
        elif (a, b) in cells:
            pairs[a, b] = (mean((a, b)) + path, share((a, b)) + scatter**2)
        else:
            pairs[a, b] = (-(mean((b, a)) + path), share((b, a)) + scatter**2)
    return pairs


class UnitScaleRlm(sm.RLM):
    """A robust regression whose residuals are known to have a standard deviation of 1."""

    def _estimate_scale(self, resid):
        return 1.0


def check(program, file):
    """The largest deviations from WLS and RLM, as texts; raises where one is too large."""
    results = json.loads(subprocess.check_output([program, "replay", file, "--json", "-"]))
    survey = json.loads(subprocess.check_output([program, "survey", file, "--json", "-"]))
    index = {antenna["rpn"]: number for number, antenna in enumerate(survey["antennas"])}
    part = [antenna["part"] for antenna in survey["antennas"]]
    phase = np.array([antenna["phase"] for antenna in survey["antennas"]])
    error = np.array([antenna["se"] for antenna in survey["antennas"]])
    reference = [index[rpn] for rpn in survey["summary"]["reference"]]
    listed = survey["pairs"]
    pairs = pairs_of(results)
    assert len(pairs) == len(listed)

    design = np.zeros((len(listed), len(phase)))
    difference, variance = np.zeros(len(listed)), np.zeros(len(listed))
    for row, pair in enumerate(listed):
        a, b = index[pair["a"]], index[pair["b"]]
        design[row, a], design[row, b] = 1, -1
        difference[row], variance[row] = pairs[a, b]
        assert abs(pair["difference"] - difference[row]) < 1e-9
    design = np.delete(design, reference, axis=1)
    kept = np.array([not pair["rejected"] for pair in listed])
    if any(pair["suspect"] and not pair["rejected"] for pair in listed):
        return "has pairs in doubt, whose variance is not listed"
    total = variance + survey["summary"]["sigma_pair"] ** 2
    residual = np.array([pair["residual"] for pair in listed])
    # Huber's weights belong to the step before the last, so these differ by what it moved.
    huber = np.minimum(1, 1.5 / np.maximum(np.abs(residual) / np.sqrt(total), 1e-300))
    weights = np.where(kept, huber / total, 1e-9)
    free = np.setdiff1d(np.arange(len(phase)), reference)
    wls = sm.WLS(difference, design, weights=weights).fit()
    moved = np.max(np.abs(wls.params - phase[free]))
    covariance = np.linalg.inv(design.T @ (weights[:, None] * design))
    errors = np.max(np.abs(np.sqrt(np.diag(covariance)) - error[free]))
    limit = 1e-6 if np.all(huber == 1) else 1e-3
    assert moved < limit and errors < limit, (file, moved, errors)
    spread = np.einsum("pi,ij,pj->p", design, covariance, design)
    redundancy = np.where(kept, np.clip(1 - weights * spread, 0, 1), 1)
    scale = np.where(kept, total - huber * spread, total + spread)
    for row, pair in enumerate(listed):
        assert abs(pair["redundancy"] - redundancy[row]) < limit, (file, pair)
        if pair["w"] is not None:
            assert abs(pair["w"] - residual[row] / np.sqrt(scale[row])) < 10 * limit, (file, pair)

    root = np.sqrt(1 / total[kept])
    rlm = UnitScaleRlm(difference[kept] * root, design[kept] * root[:, None],
                       sm.robust.norms.HuberT(1.5)).fit(tol=1e-12, maxiter=500)
    robust = np.max(np.abs(rlm.params - phase[free]))
    assert robust < 1e-3, (file, robust)
    return f"WLS {moved:.1e}, standard errors {errors:.1e}, RLM {robust:.1e}, parts {max(part) + 1}"


if __name__ == "__main__":
    for name in sys.argv[2:]:
        print(f"{name}: {check(sys.argv[1], name)}")
