/** Pictures as floating numbers, and the ways in which the build bends, shrinks, masks and traces them. */

export class Raster {
  /** @param {number} width @param {number} height @param {number} channels numbers a point, row by row */
  constructor(width, height, channels) {
    Object.assign(this, { width, height, channels, data: new Float32Array(width * height * channels) });
  }

  point(at) {
    return this.data.subarray(at * this.channels, (at + 1) * this.channels);
  }
}

/** @param {number} y 0..1 from the north edge of the map @returns {number} degrees */
export function mercatorLatitude(y) {
  return (Math.atan(Math.sinh(Math.PI * (1 - 2 * y))) * 180) / Math.PI;
}

/**
 * @param {Raster} raster
 * @param {function(Float32Array, Float32Array, number, number): void} change gets point, result, column, row
 */
export function mapPoints(raster, channels, change) {
  const { width, height } = raster;
  const out = new Raster(width, height, channels);
  for (let at = 0; at < width * height; at += 1) {
    change(raster.point(at), out.point(at), at % width, Math.floor(at / width));
  }
  return out;
}

/** @returns {Raster} the globe on a square map, between the points of a source by longitude and latitude */
export function toMercator(source, size) {
  const { width, height, channels, data } = source;
  const out = new Raster(size, size, channels);
  for (let row = 0; row < size; row += 1) {
    const latitude = mercatorLatitude((row + 0.5) / size);
    const from = Math.min(height - 1.001, Math.max(0, ((90 - latitude) / 180) * height - 0.5));
    const above = Math.floor(from) * width;
    const share = from - Math.floor(from);
    for (let column = 0; column < size; column += 1) {
      const fromX = ((column + 0.5) / size) * width - 0.5;
      const left = Math.floor(fromX);
      const a = (above + ((left + width) % width)) * channels;
      const b = (above + ((left + 1) % width)) * channels;
      const shareX = fromX - left;
      for (let channel = 0; channel < channels; channel += 1) {
        const mix = (down) => data[a + down + channel] * (1 - shareX) + data[b + down + channel] * shareX;
        out.data[(row * size + column) * channels + channel] =
          mix(0) * (1 - share) + mix(width * channels) * share;
      }
    }
  }
  return out;
}

/** Half the width and height; points without weight do not count. */
function halved(raster, weights) {
  const width = raster.width >> 1;
  const height = raster.height >> 1;
  const out = new Raster(width, height, raster.channels);
  const outWeights = new Float32Array(width * height);
  for (let to = 0; to < width * height; to += 1) {
    const corner = 2 * Math.floor(to / width) * raster.width + 2 * (to % width);
    const mean = out.point(to);
    for (const from of [corner, corner + 1, corner + raster.width, corner + raster.width + 1]) {
      outWeights[to] += weights[from];
      for (let channel = 0; channel < mean.length; channel += 1) {
        mean[channel] += raster.data[from * mean.length + channel] * weights[from];
      }
    }
    if (outWeights[to] > 0) mean.forEach((sum, channel) => (mean[channel] = sum / outWeights[to]));
    outWeights[to] = Math.min(1, outWeights[to]);
  }
  return { raster: out, weights: outWeights };
}

/** @returns {Raster} half as wide and high, as many times as asked */
export function shrunk(raster, times) {
  let small = raster;
  for (let left = times; left > 0; left -= 1) {
    small = halved(small, new Float32Array(small.width * small.height).fill(1)).raster;
  }
  return small;
}

/** Gives the points of weight 0 the colour of those of weight 1 around them, from ever farther away. */
export function fillIn(raster, weights) {
  if (raster.width < 2 || raster.height < 2) return;
  const smaller = halved(raster, weights);
  fillIn(smaller.raster, smaller.weights);
  for (let at = 0; at < weights.length; at += 1) {
    if (weights[at] >= 1) continue;
    const column = Math.min((at % raster.width) >> 1, smaller.raster.width - 1);
    const row = Math.min(Math.floor(at / raster.width) >> 1, smaller.raster.height - 1);
    const around = smaller.raster.point(row * smaller.raster.width + column);
    const own = raster.point(at);
    for (let channel = 0; channel < own.length; channel += 1) {
      own[channel] = own[channel] * weights[at] + around[channel] * (1 - weights[at]);
    }
  }
}

/** @returns {Uint8Array} for each point of a square map whether its middle lies within the rings */
export function maskOf(rings, size) {
  const crossings = Array.from({ length: size }, () => []);
  for (const { points } of rings) {
    for (let at = 0; at < points.length; at += 2) {
      const next = (at + 2) % points.length;
      addCrossings(crossings, size, points[at], points[at + 1], points[next], points[next + 1]);
    }
  }
  const mask = new Uint8Array(size * size);
  crossings.forEach((row, index) => {
    row.sort((a, b) => a - b);
    for (let at = 0; at + 1 < row.length; at += 2) {
      const from = Math.max(0, Math.ceil(row[at] - 0.5));
      const to = Math.min(size, Math.ceil(row[at + 1] - 0.5));
      if (from < to) mask.fill(1, index * size + from, index * size + to);
    }
  });
  return mask;
}

function addCrossings(crossings, size, x0, y0, x1, y1) {
  const [top, bottom] = y0 < y1 ? [y0, y1] : [y1, y0];
  const last = Math.min(size - 1, Math.ceil(bottom * size - 0.5) - 1);
  for (let row = Math.max(0, Math.ceil(top * size - 0.5)); row <= last; row += 1) {
    const share = ((row + 0.5) / size - y0) / (y1 - y0);
    crossings[row].push((x0 + share * (x1 - x0)) * size);
  }
}

/**
 * The outlines of what is above 0 in a raster of one channel, as rings on the unit world, of which none has
 * fewer points than `least`.
 */
export function outlines(raster, least) {
  const next = new Map();
  for (let row = 0; row + 1 < raster.height; row += 1) {
    for (let column = 0; column + 1 < raster.width; column += 1) addCellLines(raster, column, row, next);
  }
  const rings = [];
  for (const start of next.keys()) {
    const ring = [];
    for (let at = start; next.has(at);) {
      const { x, y, to } = next.get(at);
      next.delete(at);
      ring.push(x, y);
      at = to;
    }
    if (ring.length / 2 >= least) rings.push(ring);
  }
  return rings;
}

/** The cell's sides, each by its two corners; inside lies on the right hand of every line. */
const CORNERS = [
  [0, 0],
  [1, 0],
  [1, 1],
  [0, 1],
];

function addCellLines({ width, height, data }, column, row, next) {
  const values = CORNERS.map(([right, down]) => data[(row + down) * width + column + right]);
  const enters = [];
  const leaves = [];
  for (let side = 0; side < 4; side += 1) {
    const [a, b] = [values[side], values[(side + 1) % 4]];
    if (a > 0 === b > 0) continue;
    (a > 0 ? leaves : enters).push(crossing(side, a / (a - b)));
  }
  enters.forEach((from, index) => {
    const to = leaves[index];
    next.set(from.key, { x: from.x, y: from.y, to: to.key });
  });

  function crossing(side, share) {
    const [fromX, fromY] = CORNERS[side];
    const [toX, toY] = CORNERS[(side + 1) % 4];
    const x = column + fromX + share * (toX - fromX);
    const y = row + fromY + share * (toY - fromY);
    // The same edge has the same name from both of its cells.
    const edge = side % 2 === 0 ? row + CORNERS[side][1] : column + CORNERS[side][0];
    const along = side % 2 === 0 ? column : row;
    const key = `${side % 2}/${edge}/${along}`;
    return { key, x: (x + 0.5) / width, y: (y + 0.5) / height };
  }
}
