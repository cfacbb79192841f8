/** Finds room for a line of text in an area. Outlines are flat lists [x0, y0, x1, y1, …], y grows downwards. */
import { boxOf } from '../base/clipping.js';

/** At so many heights of the area room is looked for. */
const LEVELS = 9;

/** The stretches [from, to] that a closed outline covers at a height, by the even-odd rule. */
function runsAt(outline, y) {
  const crossings = [];
  let previous = outline.length - 2;
  for (let at = 0; at < outline.length; at += 2) {
    const y0 = outline[previous + 1];
    const y1 = outline[at + 1];
    if (y0 > y !== y1 > y) {
      const share = (y - y0) / (y1 - y0);
      crossings.push(outline[previous] + share * (outline[at] - outline[previous]));
    }
    previous = at;
  }
  crossings.sort((a, b) => a - b);
  const runs = [];
  for (let at = 0; at + 1 < crossings.length; at += 2) runs.push([crossings[at], crossings[at + 1]]);
  return runs;
}

function common(runs, others) {
  return runs.flatMap(([from, to]) =>
    others
      .map(([otherFrom, otherTo]) => [Math.max(from, otherFrom), Math.min(to, otherTo)])
      .filter(([start, end]) => start < end),
  );
}

function without(runs, holes) {
  return holes.reduce(
    (left, [from, to]) =>
      left.flatMap(([start, end]) =>
        [
          [start, Math.min(end, from)],
          [Math.max(start, to), end],
        ].filter(([a, b]) => a < b),
      ),
    runs,
  );
}

/**
 * The widest place for a line of text.
 * @param {ArrayLike<number>} outline @param {ArrayLike<number>[]} holes areas that the text must leave free
 * @param {number} height of the line, in the outline's unit
 * @returns {{x: number, y: number, width: number}|null} the middle of the place
 */
export function roomForLine(outline, holes, height) {
  const { top, bottom } = boxOf(outline);
  let best = null;
  for (let level = 0; level < LEVELS; level += 1) {
    const y = top + ((level + 0.5) / LEVELS) * (bottom - top);
    const heights = [y - height / 2, y, y + height / 2];
    let runs = heights.map((each) => runsAt(outline, each)).reduce(common);
    for (const hole of holes) for (const each of heights) runs = without(runs, runsAt(hole, each));
    for (const [from, to] of runs) {
      const room = { x: (from + to) / 2, y, width: to - from };
      if (!best || isBetter(room, best, (top + bottom) / 2)) best = room;
    }
  }
  return best;
}

/** Wider counts; of places that are nearly as wide, the one nearer to the middle. */
function isBetter(room, best, middle) {
  if (Math.abs(room.width - best.width) > 0.02 * best.width) return room.width > best.width;
  return Math.abs(room.y - middle) < Math.abs(best.y - middle);
}
