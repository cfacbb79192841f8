/**
 * One tile's place on the map, which shows one picture after another without a gap.
 *
 * A picture is decoded before it takes the place of the one before it; a picture that is decoded only after
 * a newer one was asked for is dropped.
 */
export class TileImage {
  /** @param {HTMLElement} element the tile's box */
  constructor(element) {
    this.element = element;
    this.latest = null;
  }

  /**
   * @param {string} url address of the picture
   * @returns {Promise<boolean>} false when the picture can't be read; what was shown then stays
   */
  async show(url) {
    const image = document.createElement('img');
    image.alt = '';
    image.draggable = false;
    image.src = url;
    this.latest = image;
    try {
      await image.decode();
    } catch {
      return this.latest !== image;
    }
    if (this.latest === image) this.element.replaceChildren(image);
    return true;
  }

  /** Nothing is on this tile. */
  clear() {
    this.latest = null;
    this.element.replaceChildren();
  }
}
