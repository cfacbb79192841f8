/** Which corners of an outline get a handle: those in view, and not more than can be told apart. */

/** More handles than this make dragging slow, and are too close together to be taken hold of. */
const MOST_HANDLES = 200;
/** Between two handles where there are too many, pixels; doubled until there are few enough. */
const FIRST_GAP = 14;

/**
 * @param {{x: number, y: number}[]} points the corners, pixels of the view
 * @param {{x: number, y: number}} size of the view, pixels
 * @returns {number[]} indices; the first and the last corner are left out only where they are out of view
 */
export function chooseHandles(points, size) {
  const inView = [];
  points.forEach(({ x, y }, index) => {
    if (x >= 0 && x <= size.x && y >= 0 && y <= size.y) inView.push(index);
  });
  let chosen = inView;
  for (let gap = FIRST_GAP; chosen.length > MOST_HANDLES; gap *= 2) chosen = spaced(points, inView, gap);
  return chosen;
}

function spaced(points, indices, gap) {
  const last = points.length - 1;
  let kept = null;
  return indices.filter((index) => {
    const { x, y } = points[index];
    const isFree = !kept || Math.abs(x - kept.x) >= gap || Math.abs(y - kept.y) >= gap;
    if (!isFree && index !== last) return false;
    kept = points[index];
    return true;
  });
}
