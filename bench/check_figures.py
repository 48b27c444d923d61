"""Computes with NumPy and SciPy, out of the densities that the program exports, what the program computes
of them, and compares: check_figures.py <folder that density_figures has filled>. Prints a line for each
figure; fails if one differs by more than is written behind it.

What is a plain sum is computed alike and has to agree to rounding. The deviation of crossing times is
computed in another way: the program moves hits along the edge, here a normal distribution is fitted to the
share of hits above the level, point by point; of an eye's crossing the times of a thin slice are taken."""

import pathlib
import sys

import numpy
import scipy.optimize
import scipy.stats

failed = 0


def compare(name, ours, theirs, allowed):
    global failed
    agrees = abs(ours - theirs) <= allowed
    failed += not agrees
    print(f"  {name}: {ours:.6g}, here {theirs:.6g}{'' if agrees else ' DIFFERS'} (allowed {allowed:.2g})")


def moments(values, hits):
    mean = numpy.average(values, weights=hits)
    return mean, numpy.sqrt(numpy.average((values - mean) ** 2, weights=hits))


def check_histogram(told, counts, levels):
    hits = counts[100:500].sum(axis=0).astype(int)
    mean, sigma = moments(levels, hits)
    every = numpy.repeat(levels, hits)
    for name, value in {"mean": mean, "sigma": sigma, "median": numpy.median(every),
                        "mode": levels[numpy.argmax(hits)], "hits": hits.sum(),
                        "within_1": numpy.mean(abs(every - mean) <= sigma),
                        "within_2": numpy.mean(abs(every - mean) <= 2 * sigma)}.items():
        compare(name, told[name], value, 1e-6 * max(1, abs(value)))


def check_eye(told, counts, times, levels):
    spans = numpy.zeros(len(times), bool)
    step = times[1] - times[0]
    middle = told["crossing"] + told["interval"] / 2
    places = middle + told["interval"] * numpy.arange(-4, 5)
    for place in places:
        low, high = place - told["interval"] / 10, place + told["interval"] / 10
        if low >= times[0] and high <= times[-1] + step:
            spans |= (times >= low) & (times < high)
    hits = counts[spans].sum(axis=0)
    between = (told["one"] + told["zero"]) / 2
    one, sigma_one = moments(levels[levels >= between], hits[levels >= between])
    zero, sigma_zero = moments(levels[levels < between], hits[levels < between])
    found = {"one": one, "zero": zero, "sigma_one": sigma_one, "sigma_zero": sigma_zero,
             "height": one - zero - 3 * (sigma_one + sigma_zero)}
    if "q" in told:
        rms = numpy.sqrt((sigma_one**2 + sigma_zero**2) / 2)
        found |= {"q": (one - zero) / (sigma_one + sigma_zero),
                  "signal_to_noise": 20 * numpy.log10((one - zero) / rms)}
    for name, value in found.items():
        # A span may begin or end one point off, by rounding.
        compare(name, told[name], value, 0.005 * abs(value))
    if told["crossing_sigma"] > 3 * step:  # else no slice is thin enough
        thin = abs(levels - told["crossing_level"]) < 0.01 * (one - zero)
        near = abs(times - told["crossing"]) < told["interval"] / 2
        _, sigma = moments(times[near], counts[near][:, thin].sum(axis=1))
        compare("crossing_sigma", told["crossing_sigma"], sigma, 0.05 * sigma)


def check_edge(told, counts, times, levels):
    above = counts[:, levels >= told["jitter_level"]].sum(axis=1) / counts.sum(axis=1)
    near = abs(times - told["crossing_mean"]) < 8 * told["crossing_times_sigma"]
    share = above[near] if above[near][-1] > 0.5 else 1 - above[near]
    (mean, sigma), _ = scipy.optimize.curve_fit(
        scipy.stats.norm.cdf, times[near], share, p0=(told["crossing_mean"], told["crossing_times_sigma"]))
    compare("crossing_mean", told["crossing_mean"], mean, 0.1 * sigma)
    compare("crossing_times_sigma", told["crossing_times_sigma"], sigma, 0.03 * sigma)
    if "total" in told:
        compare("total", told["total"],
                told["deterministic"] - 2 * scipy.stats.norm.ppf(1e-12) * told["random"], 1e-6 * told["total"])


for path in sorted(pathlib.Path(sys.argv[1]).glob("density?.npy")):
    lines = path.with_suffix(".txt").read_text().splitlines()
    told = {name: float(value) for name, value in (line.split() for line in lines[1:])}
    counts = numpy.load(path)
    axes = numpy.load(path.with_name(path.stem + "_axes.npy"))
    levels = axes["levels"] * 1e3
    times = (axes["first_time"] + axes["time_per_point"] * numpy.arange(len(counts))) * 1e12
    print(lines[0][2:])
    check_histogram(told, counts, levels)
    if "interval" in told:
        check_eye(told, counts, times, levels)
    if "crossing_mean" in told:
        check_edge(told, counts, times, levels)
sys.exit(f"{failed} figures differ" if failed else 0)
