/** The pictures of the earth that some map types show, loaded when they are first wanted. */
import { loadBlob } from '../base/loading.js';

/**
 * Each picture in its sizes, the smallest first: that one comes first, and shows the whole world without
 * flicker.
 */
const FILES = {
  land: ['../data/land_small.jpg', '../data/land.jpg'],
  sea: ['../data/sea.jpg'],
  relief: ['../data/relief.jpg'],
};
const TILE_SIZE = 256;

export class Pictures {
  /** @param {function(): void} arrived called whenever there is more to draw */
  constructor(arrived) {
    this.arrived = arrived;
    this.levels = {};
  }

  /**
   * Begins to load a picture, unless it is there already.
   * @returns {Promise<void>} refused when it can't be had
   */
  async want(name) {
    if (this.levels[name]) return;
    const levels = (this.levels[name] = []);
    try {
      for (const url of FILES[name]) {
        const image = await createImageBitmap(await loadBlob(url));
        const context = document.createElement('canvas').getContext('2d');
        levels.push({ size: image.width, pattern: context.createPattern(image, 'repeat') });
        this.arrived();
      }
    } catch (error) {
      if (levels.length > 0) return console.error(`${name}: only the small picture: ${error.message}`);
      delete this.levels[name];
      throw error;
    }
  }

  /** @returns {CanvasPattern|null} what fills a tile with its part of the picture */
  pattern(name, { x, y, z }) {
    const world = TILE_SIZE * 2 ** z;
    const levels = this.levels[name] ?? [];
    const level = levels.find(({ size }) => size >= world) ?? levels.at(-1);
    if (!level) return null;
    const scale = world / level.size;
    level.pattern.setTransform(new DOMMatrix([scale, 0, 0, scale, -x * TILE_SIZE, -y * TILE_SIZE]));
    return level.pattern;
  }
}
