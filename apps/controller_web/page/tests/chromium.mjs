/** How the tests start Debian's browser. */
export const executablePath = process.env.CHROMIUM ?? '/usr/lib/chromium/chromium-headless-shell';
export const args = [
  '--no-sandbox',
  '--disable-quic',
  '--no-first-run',
  '--disable-background-networking',
  '--disable-dev-shm-usage',
  '--font-render-hinting=none',
];
