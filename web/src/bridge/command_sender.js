/**
 * Sends commands to the client: each is a navigation of a hidden frame, which the client cancels.
 *
 * The browser stops a frame that navigates more than 200 times in 10 seconds, and a navigation of a frame
 * can replace an earlier one that has not reached the client. So frames take turns, and each rests after a
 * command; measured in the client's browser, 500 commands at once then arrive complete and in order.
 */
export const FRAME_COUNT = 32;
export const REST_MS = 60;

export class CommandSender {
  /**
   * @param {function(number, string): void} navigate sends frame number 0..FRAME_COUNT−1 to a command
   * @param {{now: function(): number, wait: function(function(): void, number): void}} clock milliseconds
   */
  constructor(navigate, clock = { now: () => performance.now(), wait: (run, ms) => setTimeout(run, ms) }) {
    this.navigate = navigate;
    this.clock = clock;
    this.waiting = [];
    this.next = 0;
    this.freeAt = new Array(FRAME_COUNT).fill(-Infinity);
    this.paused = false;
  }

  /** @param {string} command text that is safe in a URL */
  send(command) {
    this.waiting.push(command);
    if (!this.paused) this.pump();
  }

  pump() {
    while (this.waiting.length > 0) {
      const rest = this.freeAt[this.next] - this.clock.now();
      if (rest > 0) return this.pause(rest);
      this.freeAt[this.next] = this.clock.now() + REST_MS;
      this.navigate(this.next, this.waiting.shift());
      this.next = (this.next + 1) % FRAME_COUNT;
    }
  }

  pause(ms) {
    this.paused = true;
    this.clock.wait(() => {
      this.paused = false;
      this.pump();
    }, Math.ceil(ms));
  }
}

/** A sender that uses frames of this page. */
export function createCommandSender() {
  const frames = Array.from({ length: FRAME_COUNT }, addFrame);
  const prefix = location.origin + '/dummy/';
  return new CommandSender((index, command) => (frames[index].src = prefix + command));
}

function addFrame() {
  const frame = document.createElement('iframe');
  frame.hidden = true;
  frame.tabIndex = -1;
  document.body.appendChild(frame);
  return frame;
}
