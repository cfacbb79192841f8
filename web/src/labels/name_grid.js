/** Some of the names on the map, by the cells of a grid, so that those near a place are found at once. */

/** The finest grid has this many halvings of the world: cells of some 0.7 degrees. */
const FINEST = 9;

export class NameGrid {
  /**
   * @param {import('./name_file.js').NameFile} names
   * @param {number} level the world has 2^level cells each way, up to a limit
   * @param {function(number): boolean} isWanted by index
   */
  constructor(names, level, isWanted) {
    this.names = names;
    this.shift = 32 - Math.min(level, FINEST);
    this.side = 2 ** (32 - this.shift);
    const counts = new Uint32Array(this.side * this.side + 1);
    const wanted = [];
    for (let index = 0; index < names.count; index += 1) {
      if (!isWanted(index)) continue;
      wanted.push(index);
      counts[this.cell(index) + 1] += 1;
    }
    for (let cell = 1; cell < counts.length; cell += 1) counts[cell] += counts[cell - 1];
    this.starts = counts;
    this.members = new Uint32Array(wanted.length);
    const next = counts.slice();
    for (const index of wanted) this.members[next[this.cell(index)]++] = index;
  }

  cell(index) {
    const column = this.shift === 32 ? 0 : this.names.x[index] >>> this.shift;
    const row = this.shift === 32 ? 0 : this.names.y[index] >>> this.shift;
    return row * this.side + column;
  }

  isIn({ left, right, top, bottom }, index, turn) {
    const x = this.names.worldX(index) + turn;
    const y = this.names.worldY(index);
    return left <= x && x <= right && top <= y && y <= bottom;
  }

  /**
   * Calls `visit` for every name in a box on the unit world, cell by cell. x may leave 0..1: the name is then
   * visited with the turn of the world at which it lies there.
   * @param {import('../base/clipping.js').Box} box @param {function(number, number): void} visit gets index and
   *     turn
   */
  visit(box, visit) {
    const top = Math.max(0, Math.floor(box.top * this.side));
    const bottom = Math.min(this.side - 1, Math.floor(box.bottom * this.side));
    const first = Math.floor(box.left * this.side);
    const last = Math.min(Math.floor(box.right * this.side), first + this.side);
    for (let row = top; row <= bottom; row += 1) {
      for (let column = first; column <= last; column += 1) {
        const turn = Math.floor(column / this.side);
        const cell = row * this.side + column - turn * this.side;
        for (let at = this.starts[cell]; at < this.starts[cell + 1]; at += 1) {
          const index = this.members[at];
          if (this.isIn(box, index, turn)) visit(index, turn);
        }
      }
    }
  }
}
