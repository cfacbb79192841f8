/** Gets files from the station, within a time. */

const TIMEOUT_MS = 20000;

async function load(url, read) {
  const stop = new AbortController();
  const timer = setTimeout(() => stop.abort(), TIMEOUT_MS);
  try {
    const answer = await fetch(url, { signal: stop.signal });
    if (!answer.ok) throw new Error(`${url}: ${answer.status}`);
    return await read(answer);
  } finally {
    clearTimeout(timer);
  }
}

export const loadBytes = (url) => load(url, (answer) => answer.arrayBuffer());
export const loadBlob = (url) => load(url, (answer) => answer.blob());
export const loadJson = (url) => load(url, (answer) => answer.json());
